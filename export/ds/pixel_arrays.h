#pragma once

#include "export/ds/rotations.h"
#include "export/files/output_writer.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <cstdint>
#include <vector>

// One turn of a glyph's 8-bit coverage, row by row from the top, as its pixel array holds it.
struct TurnedImage
{
    unsigned width = 0;  // values per line
    unsigned height = 0; // lines
    std::vector<uint8_t> pixels;
};

// The glyph as rendered, a quarter turn anticlockwise, a half turn and a quarter turn
// clockwise: the images of rotations 0, 90, 180 and 270.
using TurnedImages = std::array<TurnedImage, 4>;

// The glyph's four images, exactly as WritePixelArrays writes them. `bitmap` must have a
// buffer, one byte per pixel and a positive pitch; bytes past `width` in a row are never read.
void TurnGlyph(const FT_Bitmap& bitmap, TurnedImages& images);

// Writes the images of `rotations`, in kRotations order, as char_C_pixels_0, _90, _180 and
// _270: one text line per line of the image, each value as "0xAB, ". They are read straight
// from the glyph's buffer, as TurnGlyph reads them; nothing is copied.
void WritePixelArrays(OutputWriter& out, unsigned int code, const FT_Bitmap& bitmap,
                      const RotationList& rotations = AllRotations());
