#pragma once

#include "charset/export_characters.h"
#include "export/export_listener.h"
#include "export/export_options.h"
#include "export/files/output_writer.h"
#include "raster/ft_font.h"

#include <string>

// Writes the bitmap font source of `characters` to `out`: the include of the header
// `baseName`.h, one section per character (kerning tables when it has pairs, pixel arrays
// when its glyph has pixels, character records), then the font records; the arrays and
// records of the rotations `options` chooses.
// The face must be set to the export size and `baseName` sanitized.
// Throws FTException when a glyph cannot be rendered; `out` then holds the sections of
// the characters before it.
void WriteFontSource(OutputWriter& out, FTFont& font, const std::string& baseName, const ExportCharacters& characters,
                     const ExportOptions& options, const ExportListeners& listeners = {});

// The fonts of an export whose characters come from several (ExportCharacter::font
// indexes them): each glyph from its own font, kerning only between characters of the
// same font, the font records from the main font, fonts[0]. Every face must be set to
// the export size.
void WriteFontSource(OutputWriter& out, const std::vector<FTFont*>& fonts, const std::string& baseName,
                     const ExportCharacters& characters, const ExportOptions& options,
                     const ExportListeners& listeners = {});
