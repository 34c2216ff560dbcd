#ifndef _FONT_LATIN1_FONT_H
#define _FONT_LATIN1_FONT_H

#include <ds_font.h>

extern const ds_bitmap_font_t font_latin1_font_0;
extern const ds_bitmap_font_t font_latin1_font_90;
extern const ds_bitmap_font_t font_latin1_font_180;
extern const ds_bitmap_font_t font_latin1_font_270;

#endif
