#pragma once

#include "charset/char_code_list.h"
#include "export/export_options.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <optional>
#include <string>

// The warning for the listed codes whose character (CharacterFor) the face has no glyph
// for, as ascending ranges: "no glyph for 0-31, 127-159; ...". Nothing when every code
// has one. Every code must be below 256.
std::optional<std::string> MissingGlyphWarning(FT_Face face, const CharCodeList& codes, const ExportOptions& options);
