// The firmware's bitmap font types, which generated fonts fill in. Every firmware that
// uses the generator has this header of its own; the generator never writes it.
#ifndef DS_FONT_H
#define DS_FONT_H

#include <stdint.h>

// One character in one rotation.
typedef struct
{
    uint32_t w;                        // pixel columns of the bitmap, as turned
    uint32_t h;                        // pixel rows
    int32_t xoff;                      // pen position to the bitmap's left column, positive right
    int32_t yoff;                      // baseline to the bitmap's top row, positive up
    int32_t xadvance;                  // pen movement after the character
    const char* kerning_table_prev;    // characters that can stand before it, 0-terminated; or null
    const int8_t* kerning_table_delta; // the pen adjustment after each of them
    const uint8_t* pixels;             // w * h coverage values, 0 to 255, row by row; or null
} ds_bitmap_font_char_t;

// A font in one rotation: its line metrics and its characters by 8-bit code.
typedef struct
{
    uint32_t height; // distance between two baselines
    int32_t ascender;
    int32_t descender;                       // negative below the baseline
    const ds_bitmap_font_char_t* chars[256]; // null for codes the font leaves out
} ds_bitmap_font_t;

#endif
