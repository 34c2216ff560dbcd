#pragma once

#include "export/files/output_writer.h"
#include "export/packed/packed_font.h"

#include <string>

// Writes NAME.c of a packed font: its arrays and the font record font_NAME, which the
// header declares. `baseName` is sanitized.
void WritePackedFontSource(OutputWriter& out, const std::string& baseName, const PackedFont& font);

// Writes NAME.h, which declares font_NAME for C and C++ alike.
void WritePackedFontHeader(OutputWriter& out, const std::string& baseName);
