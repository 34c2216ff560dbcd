// A firmware's text drawing in any of the four rotations, from the generated records alone.
// The screen's x grows to the right and y downwards; (x, y) is the pen on the baseline.
#ifndef DRAW_TEXT_H
#define DRAW_TEXT_H

#include <ds_font.h>

// Where the pixel array of one character goes: its top-left pixel and its size as turned.
struct GlyphBox
{
    int left;
    int top;
    int columns; // w at 0 and 180, h at 90 and 270
    int rows;    // h at 0 and 180, w at 90 and 270
};

// The box of `c`, from the font record of `rotation`, with the pen at (x, y). The records
// of every rotation hold the glyph's unturned w, h, xoff and yoff.
inline GlyphBox PlaceGlyph(const ds_bitmap_font_char_t& c, unsigned rotation, int x, int y)
{
    const int w = static_cast<int>(c.w), h = static_cast<int>(c.h);
    switch (rotation) {
    case 90: // a quarter turn anticlockwise: the text runs up the screen
        return {x - c.yoff, y - c.xoff - w, h, w};
    case 180:
        return {x - c.xoff - w, y + c.yoff - h, w, h};
    case 270: // a quarter turn clockwise: the text runs down the screen
        return {x + c.yoff - h, y + c.xoff, h, w};
    default:
        return {x + c.xoff, y - c.yoff, w, h};
    }
}

// Moves the pen `distance` pixels along the text: right, up, left or down.
inline void MovePen(unsigned rotation, int distance, int& x, int& y)
{
    switch (rotation) {
    case 90:
        y -= distance;
        break;
    case 180:
        x -= distance;
        break;
    case 270:
        y += distance;
        break;
    default:
        x += distance;
    }
}

// The pen adjustment between `previous` and `c`: the delta of the first entry of its
// kerning table naming `previous`, up to the table's closing 0.
inline int KerningAfter(const ds_bitmap_font_char_t& c, char previous)
{
    for (int i = 0; c.kerning_table_prev != nullptr && c.kerning_table_prev[i] != 0; ++i) {
        if (c.kerning_table_prev[i] == previous)
            return c.kerning_table_delta[i];
    }
    return 0;
}

// Draws `text` (0-terminated, in the font's codepage) with `font`, the font record of
// `rotation`, the pen starting at (x, y): plot(px, py, coverage) for every pixel of every
// glyph. Characters the font leaves out are skipped.
template <typename Plot>
void DrawText(const ds_bitmap_font_t& font, unsigned rotation, const char* text, int x, int y, Plot&& plot)
{
    char previous = 0;
    for (; *text != 0; ++text) {
        const ds_bitmap_font_char_t* c = font.chars[static_cast<unsigned char>(*text)];
        if (c == nullptr)
            continue;
        if (previous != 0)
            MovePen(rotation, KerningAfter(*c, previous), x, y);
        const GlyphBox box = PlaceGlyph(*c, rotation, x, y);
        for (int row = 0; c->pixels != nullptr && row < box.rows; ++row) {
            for (int column = 0; column < box.columns; ++column)
                plot(box.left + column, box.top + row, c->pixels[row * box.columns + column]);
        }
        MovePen(rotation, c->xadvance, x, y);
        previous = *text;
    }
}

#endif
