// Fuzz target for a font file as a user may hand it to the tool: written to a file, opened,
// and exported at a few heights (odd ones with GPOS kerning) with ASCII and some Latin-1 letters. FreeType refusing the
// file, a size or a glyph (FTException) is a correct outcome; besides the sanitizers' checks
// it fails when a successful export lacks a complete file or a failed one leaves a header.
#include "export/export_font.h"
#include "raster/ft_exception.h"
#include "raster/strike_height.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

void Check(bool ok, const char* fault)
{
    if (!ok) {
        std::fprintf(stderr, "font_export_fuzz: %s\n", fault);
        std::abort();
    }
}

bool EndsWith(const fs::path& path, const std::string& tail)
{
    std::ifstream in(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    return text.ends_with(tail);
}

// One scratch directory per process, removed at its end.
struct ScratchDir
{
    fs::path path;
    ScratchDir()
    {
        std::string pattern = (fs::temp_directory_path() / "veltrane-fuzz-XXXXXX").string();
        Check(mkdtemp(pattern.data()) != nullptr, "cannot create a scratch directory");
        path = pattern;
    }
    ~ScratchDir()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const ScratchDir scratch;
    const fs::path& dir = scratch.path;
    std::ofstream(dir / "font.ttf", std::ios::binary).write(reinterpret_cast<const char*>(data), std::streamsize(size));
    FTFont font;
    try {
        font.LoadFace((dir / "font.ttf").c_str());
    } catch (const FTException&) {
        return 0;
    }
    CharCodeList codes(128);
    for (uint32_t code = 0; code < 128; ++code)
        codes[code] = code;
    codes.insert(codes.end(), {160, 196, 233, 255});
    // A face with bitmap strikes is also exported at its first.
    std::vector<unsigned> heights = {6, 16, 37};
    const FT_Pos strike = font.Face()->num_fixed_sizes > 0 ? StrikePixelHeight(font.Face()->available_sizes[0]) : 0;
    if (strike >= 6 && strike <= 256)
        heights.push_back(static_cast<unsigned>(strike));
    for (unsigned height : heights) {
        fs::remove(dir / "f.h");
        std::string name = "f";
        ExportOptions options;
        options.kerning = height % 2 ? KerningMode::Auto : KerningMode::Legacy; // GPOS where the font has it
        try {
            Check(ExportFont(&font, name, dir.string() + "/", height, &codes, options),
                  "the export into a writable directory failed");
        } catch (const FTException&) {
            Check(!fs::exists(dir / "f.h"), "a FreeType failure left a header");
            continue;
        }
        Check(EndsWith(dir / "f.cpp", "}\n};\n") && EndsWith(dir / "f.h", "\n#endif\n"),
              "the export reported success without both complete files");
    }
    return 0;
}
