// A consumer of an exported font, built apart from the tool with strict warnings: draws
// TEXT from the font records in each of the four rotations and compares every canvas
// pixel for pixel with TEXT drawn by FreeType directly and turned the same way.
//
//   draw_with_records FONT HEIGHT TEXT

#include <consumer_font.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct Canvas
{
    int width, height;
    std::vector<uint8_t> pixels;

    Canvas(int w, int h) : width(w), height(h), pixels(static_cast<size_t>(w) * h, 0) {}
    uint8_t& At(int x, int y) { return pixels[static_cast<size_t>(y) * width + x]; }
    // Overlapping glyphs keep the stronger coverage; pixels off the canvas are dropped.
    void Blend(int x, int y, uint8_t value)
    {
        if (x >= 0 && y >= 0 && x < width && y < height && value > At(x, y))
            At(x, y) = value;
    }
};

// Turned like the exported pixel arrays: 90 a quarter turn anticlockwise, 180 a half
// turn, 270 a quarter turn clockwise.
Canvas Rotated(Canvas c, int rotation)
{
    const bool quarter = rotation == 90 || rotation == 270;
    Canvas out(quarter ? c.height : c.width, quarter ? c.width : c.height);
    for (int y = 0; y < c.height; ++y) {
        for (int x = 0; x < c.width; ++x) {
            const int turnedX[] = {x, y, c.width - 1 - x, c.height - 1 - y};
            const int turnedY[] = {y, c.width - 1 - x, c.height - 1 - y, x};
            out.At(turnedX[rotation / 90], turnedY[rotation / 90]) = c.At(x, y);
        }
    }
    return out;
}

// The reference, with the pen arithmetic of a consumer: whole-pixel advance and kerning,
// each 26.6 value floored, the kerning with the previous character applied first.
Canvas DrawWithFreeType(const char* fontPath, int size, const std::string& text, int pen, int baseline, Canvas canvas)
{
    FT_Library library;
    FT_Face face;
    if (FT_Init_FreeType(&library) != 0 || FT_New_Face(library, fontPath, 0, &face) != 0 ||
        FT_Set_Pixel_Sizes(face, 0, size) != 0) {
        std::fprintf(stderr, "cannot open %s\n", fontPath);
        std::exit(1);
    }
    FT_UInt previous = 0;
    for (unsigned char c : text) {
        const FT_UInt index = FT_Get_Char_Index(face, c);
        FT_Vector kerning{0, 0};
        if (previous != 0)
            FT_Get_Kerning(face, previous, index, FT_KERNING_DEFAULT, &kerning);
        pen += static_cast<int>(kerning.x >> 6);
        if (FT_Load_Glyph(face, index, FT_LOAD_DEFAULT) != 0 ||
            FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) != 0) {
            std::fprintf(stderr, "cannot render %u\n", c);
            std::exit(1);
        }
        const FT_Bitmap& bitmap = face->glyph->bitmap;
        for (int r = 0; r < static_cast<int>(bitmap.rows); ++r)
            for (int col = 0; col < static_cast<int>(bitmap.width); ++col)
                canvas.Blend(pen + face->glyph->bitmap_left + col, baseline - face->glyph->bitmap_top + r,
                             bitmap.buffer[r * bitmap.pitch + col]);
        pen += static_cast<int>(face->glyph->advance.x >> 6);
        previous = index;
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return canvas;
}

int KerningBefore(const ds_bitmap_font_char_t& ch, char previous)
{
    for (int i = 0; ch.kerning_table_prev != nullptr && ch.kerning_table_prev[i] != 0; ++i) {
        if (ch.kerning_table_prev[i] == previous)
            return ch.kerning_table_delta[i];
    }
    return 0;
}

// Draws TEXT from the records of one rotation. (gx, gy), a glyph's top-left corner on the
// unturned canvas of width x rows, is turned into the top-left corner of its turned array;
// the arrays of 90 and 270 are h wide and w high.
Canvas DrawWithRecords(const ds_bitmap_font_t& font, int rotation, const std::string& text, int pen, int baseline,
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
        const int gx = pen + ch->xoff, gy = baseline - ch->yoff;
        const int w = static_cast<int>(ch->w), h = static_cast<int>(ch->h), arrayWidth = quarter ? h : w;
        const int x0[] = {gx, gy, width - gx - w, rows - gy - h};
        const int y0[] = {gy, width - gx - w, rows - gy - h, gx};
        for (int i = 0; ch->pixels != nullptr && i < w * h; ++i)
            canvas.Blend(x0[rotation / 90] + i % arrayWidth, y0[rotation / 90] + i / arrayWidth, ch->pixels[i]);
        pen += ch->xadvance;
        previous = c;
    }
    return canvas;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: draw_with_records FONT HEIGHT TEXT\n");
        return 2;
    }
    const int size = std::atoi(argv[2]);
    const std::string text = argv[3];
    // Room around the text for ink left of the pen, above the ascender and below the baseline.
    const int width = (static_cast<int>(text.size()) + 4) * size, rows = 2 * size;
    const int pen = size / 2, baseline = size * 3 / 2;
    const Canvas reference = DrawWithFreeType(argv[1], size, text, pen, baseline, Canvas(width, rows));

    // A blank reference would prove nothing.
    if (std::count(reference.pixels.begin(), reference.pixels.end(), 0) == static_cast<long>(reference.pixels.size())) {
        std::fprintf(stderr, "nothing was drawn\n");
        return 1;
    }
    const ds_bitmap_font_t* fonts[] = {&font_consumer_font_0, &font_consumer_font_90, &font_consumer_font_180,
                                       &font_consumer_font_270};
    int failures = 0;
    for (int i = 0; i < 4; ++i) {
        const Canvas expected = Rotated(reference, 90 * i);
        const Canvas drawn = DrawWithRecords(*fonts[i], 90 * i, text, pen, baseline, width, rows);
        long differing = 0;
        for (size_t p = 0; p < drawn.pixels.size(); ++p)
            differing += drawn.pixels[p] != expected.pixels[p];
        if (differing != 0)
            std::fprintf(stderr, "rotation %d: %ld pixels differ\n", 90 * i, differing);
        failures += differing != 0;
    }
    std::printf("%s: %d of 4 rotations match\n", text.c_str(), 4 - failures);
    return failures == 0 ? 0 : 1;
}
