#include "proof/grey_png.h"

#include <png.h>
#include <zlib.h>

#include <csetjmp>
#include <cstdio>
#include <vector>

namespace {

// The caller has its own message for a failed write; libpng's would be printed as well.
void QuietError(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void NoWarning(png_structp, png_const_charp)
{
}

// libpng reports errors by longjmp to the setjmp below; everything with a destructor
// is made before it.
bool Encode(FILE* file, const GreyImage& image, png_bytepp rows)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, QuietError, NoWarning);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    if (info == nullptr) {
        png_destroy_write_struct(&png, nullptr);
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    // The picture is for looking, not archiving: long runs of white and grey compress well
    // with run-length matches alone, several times faster than the default.
    png_set_compression_level(png, 1);
    png_set_compression_strategy(png, Z_RLE);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_IHDR(png, info, image.width, image.height, 8, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

} // namespace

bool WriteGreyPng(FILE* file, const GreyImage& image)
{
    std::vector<png_bytep> rows(image.height);
    for (unsigned y = 0; y < image.height; ++y)
        rows[y] = const_cast<png_bytep>(image.pixels.data()) + size_t{y} * image.width;
    return Encode(file, image, rows.data());
}
