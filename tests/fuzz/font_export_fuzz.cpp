// Fuzz target for a font file as a user may hand it to the tool: written to a file, opened,
// and exported at a few heights (odd ones with GPOS kerning) with ASCII and some Latin-1
// letters, as a ds pair and as a packed one whose every glyph the runtime then draws in the
// four rotations. FreeType refusing the file, a size or a glyph (FTException) is a correct
// outcome; besides the sanitizers' checks it fails when a successful export lacks a
// complete file, a failed one leaves a header, or the runtime plots a pixel of coverage 0.
#include "export/export_font.h"
#include "export/packed/packed_render.h"
#include "raster/ft_exception.h"
#include "raster/strike_height.h"
#include "runtime/runtime_font.h"

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

void PlotCovered(void*, int, int, uint8_t coverage)
{
    Check(coverage != 0, "the runtime plotted a pixel of coverage 0");
}

// Packs the codes at the face's current size, `bpp` bits a pixel, and draws each of them and
// all of them as a text in every rotation.
void DrawPacked(FTFont& font, const CharCodeList& codes, unsigned bpp)
{
    ExportOptions options;
    options.format = FontFormat::Packed;
    options.packed.bpp = bpp;
    const ExportCharacters characters = ListExportCharacters(codes, nullptr);
    const PackedFont packed = RenderPackedFont({&font}, characters, options);
    const vt_font_t runtime = RuntimeFont(packed);
    std::string text;
    for (const ExportCharacter& character : characters)
        if (character.code != 0)
            text += static_cast<char>(character.code);
    for (int rotation = 0; rotation < 360; rotation += 90) {
        for (const ExportCharacter& character : characters)
            vt_draw_char(&runtime, static_cast<uint8_t>(character.code), 0, 0, rotation, PlotCovered, nullptr);
        vt_draw_text(&runtime, text.c_str(), 0, 0, rotation, PlotCovered, nullptr);
    }
}

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
        try {
            DrawPacked(font, codes, 1u << (height % 4)); // 1, 2, 4 and 8 bits a pixel by turns
        } catch (const FTException&) {
        }
    }
    return 0;
}
