#include "ds_text.h"

namespace {

// The pen adjustment between `previous` and the character `c` stands for.
int KerningAfter(const ds_bitmap_font_char_t& c, char previous)
{
    for (int i = 0; c.kerning_table_prev != nullptr && c.kerning_table_prev[i] != 0; ++i) {
        if (c.kerning_table_prev[i] == previous)
            return c.kerning_table_delta[i];
    }
    return 0;
}

// Copies the character's array with its top left corner where the turn about the pen puts
// the unturned glyph's box. A 90 or 270 record keeps the unturned w and h: its array is h
// wide and w high.
void DrawChar(const ds_bitmap_font_char_t& c, int x, int y, int rotation, Canvas& canvas)
{
    const int w = static_cast<int>(c.w), h = static_cast<int>(c.h);
    const bool upright = rotation == 0 || rotation == 180;
    const int columns = upright ? w : h, rows = upright ? h : w;
    const int corners[4][2] = {{x + c.xoff, y - c.yoff},
                               {x - c.yoff, y - c.xoff - w},
                               {x - c.xoff - w, y + c.yoff - h},
                               {x + c.yoff - h, y + c.xoff}};
    const int left = corners[rotation / 90][0], top = corners[rotation / 90][1];
    for (int row = 0; c.pixels != nullptr && row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            CanvasPlot(canvas, left + column, top + row, c.pixels[row * columns + column]);
    }
}

} // namespace

int DsDrawText(const ds_bitmap_font_t& font, const char* text, int x, int y, int rotation, Canvas* canvas)
{
    int advance = 0;
    char previous = 0;
    for (const char* p = text; *p != 0; ++p) {
        const ds_bitmap_font_char_t* c = font.chars[static_cast<unsigned char>(*p)];
        if (c == nullptr)
            continue;
        if (previous != 0)
            advance += KerningAfter(*c, previous);
        const int along[4][2] = {{advance, 0}, {0, -advance}, {-advance, 0}, {0, advance}};
        if (canvas != nullptr)
            DrawChar(*c, x + along[rotation / 90][0], y + along[rotation / 90][1], rotation, *canvas);
        advance += c->xadvance;
        previous = *p;
    }
    return advance;
}
