#pragma once

#include "export/output_writer.h"

#include <ft2build.h>
#include FT_FREETYPE_H

// Writes the glyph's 8-bit coverage four times, as char_C_pixels_0, _90, _180 and _270:
// as rendered, a quarter turn anticlockwise, a half turn and a quarter turn clockwise.
// One text line per row of the turned image, each value as "0xAB, ".
// `bitmap` must have a buffer, one byte per pixel and a positive pitch.
void WritePixelArrays(OutputWriter& out, unsigned int code, const FT_Bitmap& bitmap);
