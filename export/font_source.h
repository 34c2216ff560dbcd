#pragma once

#include "charset/char_code_list.h"
#include "export/export_options.h"
#include "export/output_writer.h"
#include "raster/ft_font.h"

#include <string>

// Writes the bitmap font source of `codes` to `out`: the include of the header
// `baseName`.h, one section per code (each code once, at its first place in the list:
// kerning tables when it has pairs, pixel arrays when its glyph has pixels, four
// character records), then the four font records.
// The face must be set to the export size, `baseName` sanitized, every code below 256
// and, with a codepage, standing for a character in it.
// Throws FTException when a glyph cannot be rendered; `out` then holds the sections of
// the characters before it.
void WriteFontSource(OutputWriter& out, FTFont& font, const std::string& baseName, const CharCodeList& codes,
                     const ExportOptions& options);

// The Unicode character rendered for a listed code.
char32_t CharacterFor(uint32_t code, const ExportOptions& options);
