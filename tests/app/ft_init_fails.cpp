// Preloaded into the program by freetype_failure_test.sh: FreeType refuses to start for
// the program's own code, while the toolkit's libraries still get the real FreeType.
#include <ft2build.h>
#include FT_FREETYPE_H

#include <dlfcn.h>
#include <link.h>

namespace {

bool CalledFromTheProgram(void* returnAddress)
{
    link_map* program = nullptr;
    void* self = dlopen(nullptr, RTLD_NOW);
    if (self == nullptr || dlinfo(self, RTLD_DI_LINKMAP, &program) != 0)
        return false;
    Dl_info info{};
    link_map* caller = nullptr;
    if (dladdr1(returnAddress, &info, reinterpret_cast<void**>(&caller), RTLD_DL_LINKMAP) == 0)
        return false;
    return caller == program;
}

} // namespace

extern "C" FT_Error FT_Init_FreeType(FT_Library* library)
{
    if (CalledFromTheProgram(__builtin_return_address(0)))
        return FT_Err_Out_Of_Memory;
    using Init = FT_Error (*)(FT_Library*);
    auto real = reinterpret_cast<Init>(dlsym(RTLD_NEXT, "FT_Init_FreeType"));
    return real(library);
}
