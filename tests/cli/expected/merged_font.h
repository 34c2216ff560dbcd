#ifndef _FONT_MERGED_FONT_H
#define _FONT_MERGED_FONT_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_merged_font_0;
extern const ds_bitmap_font_t font_merged_font_90;
extern const ds_bitmap_font_t font_merged_font_180;
extern const ds_bitmap_font_t font_merged_font_270;

#endif
