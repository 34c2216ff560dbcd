#pragma once

#include "charset/export_characters.h"
#include "raster/ft_font.h"

#include <optional>
#include <string>
#include <vector>

// The listed codes whose character has no glyph in its font.
struct MissingGlyphs
{
    std::string ranges; // ascending: "0-31, 127-159"; empty when every code has a glyph
    bool all = false;   // no listed code has one: the export would hold nothing real
    // " (the font is encoded in KOI8-R)" for a font in an encoding of its own
    // (FTFont::OwnEncoding) other than the codes'; empty otherwise.
    std::string encodingNote;
};

// `fonts` are the export's, as ExportCharacter::font indexes them, the main font first;
// `codepage` the one the codes are bytes of, null for none.
MissingGlyphs FindMissingGlyphs(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                                const Codepage* codepage);

// The warning for codes without a glyph: "no glyph for 0-31, 127-159; ...". Nothing when
// every code has one.
std::optional<std::string> MissingGlyphWarning(const MissingGlyphs& missing);
