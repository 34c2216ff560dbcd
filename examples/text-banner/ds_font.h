// The firmware's bitmap font types, which generated fonts fill in. Every firmware that
// uses the generator has this header of its own; the generator never writes it.
#ifndef DS_FONT_H
#define DS_FONT_H

#include <stdint.h>

// One character in one rotation. The records of all four rotations hold the same w, h, xoff,
// yoff and xadvance: those of the glyph as rendered, upright. Only `pixels` is turned: at 0
// and 180 it is w values wide and h high, at 90 and 270 h values wide and w high (a quarter
// turn anticlockwise at 90, clockwise at 270). Where a turned glyph goes relative to the pen:
// the README's "Drawing the four rotations", and draw_text.h.
typedef struct
{
    uint32_t w;                        // pixel columns of the glyph upright (rows of the 90 and 270 arrays)
    uint32_t h;                        // pixel rows of the glyph upright (columns of the 90 and 270 arrays)
    int32_t xoff;                      // pen position to the upright glyph's left column, positive along the text
    int32_t yoff;                      // baseline to the upright glyph's top row, positive away from the descender
    int32_t xadvance;                  // pen movement along the text after the character
    const char* kerning_table_prev;    // characters that can stand before it, 0-terminated; or null
    const int8_t* kerning_table_delta; // the pen adjustment along the text after each of them
    const uint8_t* pixels;             // w * h coverage values, 0 to 255, row by row as turned; or null
} ds_bitmap_font_char_t;

// A font in one rotation: its line metrics, the same in every rotation and measured across
// the text as upright, and its characters by 8-bit code.
typedef struct
{
    uint32_t height; // distance between two baselines
    int32_t ascender;
    int32_t descender;                       // negative below the baseline
    const ds_bitmap_font_char_t* chars[256]; // null for codes the font leaves out
} ds_bitmap_font_t;

#endif
