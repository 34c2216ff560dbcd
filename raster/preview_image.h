#pragma once

#include "charset/char_code_list.h"
#include "raster/preview_glyph_cache.h"

#include <cstdint>
#include <vector>

class FTFont;

// The preview always renders at this pixel height, whatever the export height.
constexpr uint32_t PREVIEW_PIXEL_SIZE = 36;

// Glyph pixels are laid over the picture with this opacity (out of 255).
constexpr uint32_t PREVIEW_GLYPH_ALPHA = 80;

// The preview area's picture: 8-bit RGB, three bytes per pixel, rows top-down with
// no padding (the layout wxImage takes).
struct PreviewImage
{
    // A white picture of the given size.
    PreviewImage(uint32_t width, uint32_t height);

    uint32_t width;
    uint32_t height;
    std::vector<uint8_t> rgb;
};

// Composes the preview pictures of the main window. Each picture is worked out afresh
// from the font's current face; only the rendered glyphs are kept between pictures
// while the face stays the same.
class PreviewComposer
{
public:
    // The preview of `codes` in the font's current face: a white area with every code
    // rendered at PREVIEW_PIXEL_SIZE in square cells as wide as the line height, row by
    // row, the first baseline one line height below the top. Each coverage pixel v > 0 is
    // laid over what is there in grey 255 - v at PREVIEW_GLYPH_ALPHA. Without a face, or
    // when the face cannot take the size, the area stays white; a glyph that cannot be
    // rendered leaves its cell empty. FreeType failures never leave this function; only
    // running out of memory does (std::bad_alloc). Leaves the face at PREVIEW_PIXEL_SIZE.
    PreviewImage Compose(FTFont& font, const CharCodeList& codes, uint32_t width, uint32_t height);

private:
    PreviewGlyphCache glyphs;
};
