#include <my_font.h>

static const char char_65_ktp[] = {86, 0};
static const int8_t char_65_ktd[] = {-1, 0};
static const uint8_t char_65_pixels_0[] = {
0x00, 0x80, 0xFF, 
0x10, 0x20, 0x30, 
};

static const uint8_t char_65_pixels_90[] = {
0xFF, 0x30, 
0x80, 0x20, 
0x00, 0x10, 
};

static const uint8_t char_65_pixels_180[] = {
0x30, 0x20, 0x10, 
0xFF, 0x80, 0x00, 
};

static const uint8_t char_65_pixels_270[] = {
0x10, 0x00, 
0x20, 0x80, 
0x30, 0xFF, 
};

static const ds_bitmap_font_char_t char_65_0 = 
{
.w = 3,
.h = 2,
.xoff = 1,
.yoff = 2,
.xadvance = 5,
.kerning_table_prev = char_65_ktp,
.kerning_table_delta = char_65_ktd,
.pixels = char_65_pixels_0
};


static const ds_bitmap_font_char_t char_65_90 = 
{
.w = 3,
.h = 2,
.xoff = 1,
.yoff = 2,
.xadvance = 5,
.kerning_table_prev = char_65_ktp,
.kerning_table_delta = char_65_ktd,
.pixels = char_65_pixels_90
};


static const ds_bitmap_font_char_t char_65_180 = 
{
.w = 3,
.h = 2,
.xoff = 1,
.yoff = 2,
.xadvance = 5,
.kerning_table_prev = char_65_ktp,
.kerning_table_delta = char_65_ktd,
.pixels = char_65_pixels_180
};


static const ds_bitmap_font_char_t char_65_270 = 
{
.w = 3,
.h = 2,
.xoff = 1,
.yoff = 2,
.xadvance = 5,
.kerning_table_prev = char_65_ktp,
.kerning_table_delta = char_65_ktd,
.pixels = char_65_pixels_270
};


