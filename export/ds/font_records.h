#pragma once

#include "export/ds/rotations.h"
#include "export/files/output_writer.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <string>

// The face's line metrics at the export size, as FreeType gives them (26.6).
struct LineMetrics
{
    FT_Pos height;
    FT_Pos ascender;
    FT_Pos descender;
};

// The line metrics as the font records hold them, in whole pixels.
struct FontRecordMetrics
{
    unsigned long height;
    long ascender;
    long descender;
};

// Which codes 0..255 have character records in the source file.
using CharTable = std::array<bool, 256>;

// Reads the size metrics of the face's current size.
LineMetrics CurrentLineMetrics(FT_Face face);

// Whole pixels by division toward zero (a descender of -4.5 pixels becomes -4), unlike
// the flooring shift used for glyph values.
FontRecordMetrics ToRecordMetrics(const LineMetrics& metrics);

// Writes the font records font_N_0 .. font_N_270 that `rotations` names, in kRotations
// order, each with its chars table of all 256 codes in code order.
void WriteFontRecords(OutputWriter& out, const std::string& baseName, const FontRecordMetrics& metrics,
                      const CharTable& written, const RotationList& rotations = AllRotations());
