#pragma once

#include "export/ds/rotations.h"
#include "export/files/output_writer.h"
#include "raster/ft_font.h"

// Writes the ds_bitmap_font_char_t records char_C_0 .. char_C_270 of one character that
// `rotations` names, in kRotations order. They share size, offsets and advance; each points
// at its own pixel array when the glyph has a buffer, and all at the kerning tables when it
// has pairs.
void WriteCharRecords(OutputWriter& out, unsigned int code, const FTGlyph& glyph, bool hasKerning,
                      const RotationList& rotations = AllRotations());
