// Test-only command-line front end of the exporter, used by the tests that compile
// exported fonts, and by `make regen-expected`.
//
//   export_tool export FONT HEIGHT DIR NAME CODES...   (CODES: "65" or "32-126")
//   export_tool reference FONT HEIGHT TEXT PENX BASELINE WIDTH ROWS OUT
//       draws TEXT with FreeType directly (no exporter code) on a WIDTH x ROWS canvas,
//       pen starting at PENX on the baseline row BASELINE, and saves it in the four
//       rotations, one after the other
//   export_tool golden DIR
//       writes the committed golden export into DIR

#include "canvas.h"
#include "golden_export.h"

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "export/exportable_codes.h"
#include "raster/ft_exception.h"
#include "raster/ft_font.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int Usage()
{
    std::fprintf(stderr, "usage: export_tool export FONT HEIGHT DIR NAME CODES...\n"
                         "       export_tool reference FONT HEIGHT TEXT PENX BASELINE WIDTH ROWS OUT\n"
                         "       export_tool golden DIR\n");
    return 2;
}

bool ParseCodes(int count, char** args, CharCodeList& codes)
{
    for (int i = 0; i < count; ++i) {
        char* end = nullptr;
        unsigned long first = std::strtoul(args[i], &end, 10);
        unsigned long last = first;
        if (*end == '-')
            last = std::strtoul(end + 1, &end, 10);
        if (*end != '\0' || last < first)
            return false;
        for (unsigned long code = first; code <= last; ++code)
            codes.push_back(static_cast<uint32_t>(code));
    }
    return true;
}

int Export(char** args, int count)
{
    CharCodeList codes;
    if (!ParseCodes(count - 4, args + 4, codes))
        return Usage();
    if (auto message = FindUnexportableCode(codes)) {
        std::fprintf(stderr, "%s\n", message->c_str());
        return 1;
    }
    FTFont font;
    font.LoadFace(args[0]);
    std::string name = args[3];
    if (!ExportFont(&font, name, std::string(args[2]) + "/", std::strtoul(args[1], nullptr, 10), &codes)) {
        std::fprintf(stderr, "Error writing file !\n");
        return 1;
    }
    return 0;
}

// Pen arithmetic as a consumer does it: whole-pixel advance and kerning, each 26.6
// value floored, kerning of the previous character applied before drawing.
int Reference(char** args)
{
    FT_Library library;
    FT_Face face;
    if (FT_Init_FreeType(&library) != 0 || FT_New_Face(library, args[0], 0, &face) != 0 ||
        FT_Set_Pixel_Sizes(face, 0, std::atoi(args[1])) != 0) {
        std::fprintf(stderr, "cannot open font\n");
        return 1;
    }
    const std::string text = args[2];
    int pen = std::atoi(args[3]);
    const int baseline = std::atoi(args[4]);
    Canvas canvas(std::atoi(args[5]), std::atoi(args[6]));

    FT_UInt previous = 0;
    for (unsigned char c : text) {
        FT_UInt index = FT_Get_Char_Index(face, c);
        if (previous != 0) {
            FT_Vector kerning;
            FT_Get_Kerning(face, previous, index, FT_KERNING_DEFAULT, &kerning);
            pen += static_cast<int>(kerning.x >> 6);
        }
        if (FT_Load_Glyph(face, index, FT_LOAD_DEFAULT) != 0 ||
            FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) != 0) {
            std::fprintf(stderr, "cannot render %u\n", c);
            return 1;
        }
        const FT_Bitmap& bitmap = face->glyph->bitmap;
        for (unsigned r = 0; r < bitmap.rows; ++r)
            for (unsigned col = 0; col < bitmap.width; ++col)
                canvas.Blend(pen + face->glyph->bitmap_left + static_cast<int>(col),
                             baseline - face->glyph->bitmap_top + static_cast<int>(r),
                             bitmap.buffer[r * bitmap.pitch + col]);
        pen += static_cast<int>(face->glyph->advance.x >> 6);
        previous = index;
    }

    FILE* out = std::fopen(args[7], "wb");
    if (out == nullptr)
        return 1;
    bool ok = true;
    for (int rotation : {0, 90, 180, 270})
        ok = SaveCanvas(out, Rotated(canvas, rotation)) && ok;
    ok = std::fclose(out) == 0 && ok;
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return ok ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return Usage();
    const std::string command = argv[1];
    try {
        if (command == "export" && argc >= 7)
            return Export(argv + 2, argc - 2);
        if (command == "reference" && argc == 10)
            return Reference(argv + 2);
        if (command == "golden" && argc == 3)
            return WriteGoldenExport(std::string(argv[2]) + "/") ? 0 : 1;
    } catch (const FTException& e) {
        std::fprintf(stderr, "FreeType: %s\n", e.what());
        return 1;
    }
    return Usage();
}
