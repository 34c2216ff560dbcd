// A consumer of an exported font, built apart from the tool with strict warnings:
// draws a string from the font records in all four rotations and compares each
// canvas with the reference that FreeType drew directly.
//
//   draw_with_records TEXT PENX BASELINE WIDTH ROWS REFERENCE

#include <consumer_font.h>

#include "canvas.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int KerningBefore(const ds_bitmap_font_char_t& ch, char previous)
{
    if (ch.kerning_table_prev == nullptr)
        return 0;
    for (int i = 0; ch.kerning_table_prev[i] != 0; ++i) {
        if (ch.kerning_table_prev[i] == previous)
            return ch.kerning_table_delta[i];
    }
    return 0;
}

// Places one glyph's turned pixel array. (gx, gy) is the glyph's top-left corner on
// the unturned canvas of size width x rows; the array of 90 and 270 is h wide, w high.
void DrawGlyph(Canvas& canvas, const ds_bitmap_font_char_t& ch, int rotation, int gx, int gy, int width, int rows)
{
    if (ch.pixels == nullptr)
        return;
    const int w = static_cast<int>(ch.w);
    const int h = static_cast<int>(ch.h);
    int x0 = gx, y0 = gy, arrayWidth = w, arrayRows = h;
    switch (rotation) {
    case 90:
        x0 = gy;
        y0 = width - gx - w;
        arrayWidth = h;
        arrayRows = w;
        break;
    case 180:
        x0 = width - gx - w;
        y0 = rows - gy - h;
        break;
    case 270:
        x0 = rows - gy - h;
        y0 = gx;
        arrayWidth = h;
        arrayRows = w;
        break;
    default:
        break;
    }
    for (int y = 0; y < arrayRows; ++y)
        for (int x = 0; x < arrayWidth; ++x)
            canvas.Blend(x0 + x, y0 + y, ch.pixels[y * arrayWidth + x]);
}

Canvas DrawString(const ds_bitmap_font_t& font, int rotation, const std::string& text, int pen, int baseline,
                  int width, int rows)
{
    const bool quarter = rotation == 90 || rotation == 270;
    Canvas canvas(quarter ? rows : width, quarter ? width : rows);
    char previous = 0;
    for (char c : text) {
        const ds_bitmap_font_char_t* ch = font.chars[static_cast<unsigned char>(c)];
        if (ch == nullptr) {
            std::fprintf(stderr, "character %d is not in the font\n", c);
            std::exit(1);
        }
        if (previous != 0)
            pen += KerningBefore(*ch, previous);
        DrawGlyph(canvas, *ch, rotation, pen + ch->xoff, baseline - ch->yoff, width, rows);
        pen += ch->xadvance;
        previous = c;
    }
    return canvas;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 7) {
        std::fprintf(stderr, "usage: draw_with_records TEXT PENX BASELINE WIDTH ROWS REFERENCE\n");
        return 2;
    }
    const std::string text = argv[1];
    const int pen = std::atoi(argv[2]);
    const int baseline = std::atoi(argv[3]);
    const int width = std::atoi(argv[4]);
    const int rows = std::atoi(argv[5]);
    FILE* reference = std::fopen(argv[6], "rb");
    if (reference == nullptr) {
        std::fprintf(stderr, "cannot open %s\n", argv[6]);
        return 1;
    }

    const ds_bitmap_font_t* fonts[] = {&font_consumer_font_0, &font_consumer_font_90, &font_consumer_font_180,
                                       &font_consumer_font_270};
    const int rotations[] = {0, 90, 180, 270};
    int failures = 0;
    long inked = 0;
    for (int i = 0; i < 4; ++i) {
        Canvas expected(1, 1);
        if (!LoadCanvas(reference, expected)) {
            std::fprintf(stderr, "reference for rotation %d is missing\n", rotations[i]);
            return 1;
        }
        const Canvas drawn = DrawString(*fonts[i], rotations[i], text, pen, baseline, width, rows);
        if (drawn.width != expected.width || drawn.height != expected.height) {
            std::fprintf(stderr, "rotation %d: canvas %dx%d, expected %dx%d\n", rotations[i], drawn.width,
                         drawn.height, expected.width, expected.height);
            ++failures;
            continue;
        }
        long differing = 0;
        for (int y = 0; y < drawn.height; ++y) {
            for (int x = 0; x < drawn.width; ++x) {
                if (drawn.At(x, y) != expected.At(x, y) && differing++ == 0)
                    std::fprintf(stderr, "rotation %d: first difference at (%d, %d): %d, expected %d\n",
                                 rotations[i], x, y, drawn.At(x, y), expected.At(x, y));
                inked += drawn.At(x, y) != 0;
            }
        }
        if (differing != 0) {
            std::fprintf(stderr, "rotation %d: %ld pixels differ\n", rotations[i], differing);
            ++failures;
        }
    }
    std::fclose(reference);
    // A blank canvas on both sides would prove nothing.
    if (inked == 0) {
        std::fprintf(stderr, "nothing was drawn\n");
        return 1;
    }
    std::printf("%s: %d of 4 rotations match\n", text.c_str(), 4 - failures);
    return failures == 0 ? 0 : 1;
}
