#ifndef _FONT_RUSSIAN_GPOS_H
#define _FONT_RUSSIAN_GPOS_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_russian_gpos_0;
extern const ds_bitmap_font_t font_russian_gpos_90;
extern const ds_bitmap_font_t font_russian_gpos_180;
extern const ds_bitmap_font_t font_russian_gpos_270;

#endif
