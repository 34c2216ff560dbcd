#ifndef _FONT_CP1251_FONT_H
#define _FONT_CP1251_FONT_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_cp1251_font_0;
extern const ds_bitmap_font_t font_cp1251_font_90;
extern const ds_bitmap_font_t font_cp1251_font_180;
extern const ds_bitmap_font_t font_cp1251_font_270;

#endif
