#ifndef _FONT_KOI8R_FONT_H
#define _FONT_KOI8R_FONT_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_koi8r_font_0;
extern const ds_bitmap_font_t font_koi8r_font_90;
extern const ds_bitmap_font_t font_koi8r_font_180;
extern const ds_bitmap_font_t font_koi8r_font_270;

#endif
