#pragma once

#include "charset/char_code_list.h"
#include "export/export_options.h"
#include "raster/ft_font.h"

#include <optional>
#include <string>

// The warning for the listed codes whose character (CharacterFor) the face has no glyph
// for, as ascending ranges: "no glyph for 0-31, 127-159; ...". Nothing when every code
// has one; a font in an encoding of its own (FTFont::OwnEncoding) other than the codes'
// is named. Every code must be below 256.
std::optional<std::string> MissingGlyphWarning(const FTFont& font, const CharCodeList& codes, const ExportOptions& options);
