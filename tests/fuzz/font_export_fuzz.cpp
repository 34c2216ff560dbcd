// Fuzz target for a font file as a user may hand it to the tool: the bytes are written to
// a file, opened as the load-font command opens it, and exported at a few heights with a
// short character list. FreeType refusing the file, a size or a glyph (FTException) is a
// correct outcome. Besides the sanitizers' checks it fails when an export reports success
// without both complete files, when an export into a writable directory fails, and when
// any path leaves a file open.

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "raster/ft_exception.h"
#include "raster/ft_font.h"

#include <dirent.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Small, mid and odd heights; a face with bitmap strikes is also exported at its first.
constexpr unsigned kHeights[] = {6, 16, 37};

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "font_export_fuzz: %s\n", what);
    std::abort();
}

// One scratch directory per process, in memory where the system has /dev/shm.
const fs::path& ScratchDir()
{
    static const fs::path dir = [] {
        const fs::path base = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        std::string pattern = (base / "veltrane-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            Fail("cannot create a scratch directory");
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(ScratchDir(), ignored);
        });
        return fs::path(pattern);
    }();
    return dir;
}

// ASCII and a few Latin-1 letters: enough to reach kerning, empty glyphs and the
// missing-glyph shape without making each run slow.
const CharCodeList& Codes()
{
    static const CharCodeList codes = [] {
        CharCodeList list;
        for (uint32_t code = 0; code < 128; ++code)
            list.push_back(code);
        for (uint32_t code : {160u, 169u, 196u, 233u, 255u})
            list.push_back(code);
        return list;
    }();
    return codes;
}

int OpenDescriptors()
{
    DIR* fds = opendir("/proc/self/fd");
    if (fds == nullptr)
        return -1;
    int count = 0;
    while (readdir(fds) != nullptr)
        ++count;
    closedir(fds);
    return count;
}

bool EndsWith(const fs::path& path, const std::string& tail)
{
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = in.tellg();
    if (!in || size < static_cast<std::streamoff>(tail.size()))
        return false;
    std::string end(tail.size(), '\0');
    in.seekg(size - static_cast<std::streamoff>(tail.size()));
    in.read(end.data(), static_cast<std::streamsize>(end.size()));
    return in && end == tail;
}

void ExportAt(FTFont& font, unsigned height)
{
    const fs::path& dir = ScratchDir();
    const fs::path source = dir / "f.cpp";
    const fs::path header = dir / "f.h";
    fs::remove(source);
    fs::remove(header);

    std::string name = "f";
    CharCodeList codes = Codes();
    const int before = OpenDescriptors();
    bool written = false;
    try {
        written = ExportFont(&font, name, dir.string() + "/", height, &codes);
    } catch (const FTException&) {
        if (OpenDescriptors() != before)
            Fail("a FreeType failure left a file open");
        if (fs::exists(header))
            Fail("a FreeType failure left a header");
        return;
    }
    if (OpenDescriptors() != before)
        Fail("the export left a file open");
    if (!written)
        Fail("the export into a writable directory failed");
    if (!EndsWith(source, "}\n};\n") || !EndsWith(header, "\n#endif\n"))
        Fail("the export reported success without both complete files");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const fs::path fontPath = ScratchDir() / "font.ttf";
    {
        std::ofstream out(fontPath, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        if (!out)
            Fail("cannot write the font file");
    }

    // A fresh FreeType per input, so that every run can be replayed on its own.
    FTFont font;
    try {
        font.LoadFace(fontPath.c_str());
    } catch (const FTException&) {
        return 0;
    }

    std::vector<unsigned> heights(std::begin(kHeights), std::end(kHeights));
    const FT_Face face = font.Face();
    if (face->num_fixed_sizes > 0 && face->available_sizes != nullptr) {
        const FT_Pos strike = (face->available_sizes[0].y_ppem + 32) >> 6;
        if (strike >= 6 && strike <= 256)
            heights.push_back(static_cast<unsigned>(strike));
    }
    for (unsigned height : heights)
        ExportAt(font, height);
    return 0;
}
