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

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

void Check(bool ok, const char* fault)
{
    if (!ok) {
        std::fprintf(stderr, "font_export_fuzz: %s\n", fault);
        std::abort();
    }
}

// One scratch directory per process, in memory where the system has /dev/shm.
const fs::path& ScratchDir()
{
    static const fs::path dir = [] {
        const fs::path base = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        std::string pattern = (base / "veltrane-fuzz-XXXXXX").string();
        Check(mkdtemp(pattern.data()) != nullptr, "cannot create a scratch directory");
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(ScratchDir(), ignored);
        });
        return fs::path(pattern);
    }();
    return dir;
}

size_t OpenFiles()
{
    return static_cast<size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

bool EndsWith(const fs::path& path, const std::string& tail)
{
    std::ifstream in(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

void ExportAt(FTFont& font, unsigned height)
{
    // ASCII and a few Latin-1 letters: enough to reach kerning, empty glyphs and the
    // missing-glyph shape without making each run slow.
    CharCodeList codes(128);
    for (uint32_t code = 0; code < 128; ++code)
        codes[code] = code;
    codes.insert(codes.end(), {160, 169, 196, 233, 255});

    const fs::path& dir = ScratchDir();
    fs::remove(dir / "f.cpp");
    fs::remove(dir / "f.h");
    std::string name = "f";
    const ExportOptions options{height % 2 ? KerningMode::Auto : KerningMode::Legacy, nullptr, {}}; // GPOS where it has it
    const size_t before = OpenFiles();
    try {
        Check(ExportFont(&font, name, dir.string() + "/", height, &codes, options), "the export into a writable directory failed");
    } catch (const FTException&) {
        Check(OpenFiles() == before, "a FreeType failure left a file open");
        Check(!fs::exists(dir / "f.h"), "a FreeType failure left a header");
        return;
    }
    Check(OpenFiles() == before, "the export left a file open");
    Check(EndsWith(dir / "f.cpp", "}\n};\n") && EndsWith(dir / "f.h", "\n#endif\n"),
          "the export reported success without both complete files");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fs::path fontPath = ScratchDir() / "font.ttf";
    Check(bool(std::ofstream(fontPath, std::ios::binary).write(reinterpret_cast<const char*>(data), std::streamsize(size))),
          "cannot write the font file");

    // A fresh FreeType per input, so that every run can be replayed on its own.
    FTFont font;
    try {
        font.LoadFace(fontPath.c_str());
    } catch (const FTException&) {
        return 0;
    }
    // Small, mid and odd heights; a face with bitmap strikes is also exported at its first.
    std::vector<unsigned> heights = {6, 16, 37};
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
