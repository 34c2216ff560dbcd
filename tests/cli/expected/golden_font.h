#ifndef _FONT_GOLDEN_FONT_H
#define _FONT_GOLDEN_FONT_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_golden_font_0;
extern const ds_bitmap_font_t font_golden_font_90;
extern const ds_bitmap_font_t font_golden_font_180;
extern const ds_bitmap_font_t font_golden_font_270;

#endif
