// Test copy of the consumer library's record types, written from the member lists
// the generated source initialises (in this order).
#ifndef DS_FONT_H
#define DS_FONT_H

#include <stdint.h>

typedef struct
{
    uint32_t w;
    uint32_t h;
    int32_t xoff;
    int32_t yoff;
    int32_t xadvance;
    const char* kerning_table_prev;
    const int8_t* kerning_table_delta;
    const uint8_t* pixels;
} ds_bitmap_font_char_t;

typedef struct
{
    uint32_t height;
    int32_t ascender;
    int32_t descender;
    const ds_bitmap_font_char_t* chars[256];
} ds_bitmap_font_t;

#endif
