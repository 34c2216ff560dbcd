#ifndef _FONT_GPOS_FONT_H
#define _FONT_GPOS_FONT_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_gpos_font_0;
extern const ds_bitmap_font_t font_gpos_font_90;
extern const ds_bitmap_font_t font_gpos_font_180;
extern const ds_bitmap_font_t font_gpos_font_270;

#endif
