#pragma once

#include "charset/export_characters.h"
#include "raster/ft_font.h"

#include <optional>
#include <string>
#include <vector>

// The listed codes whose character has no glyph in its font, nor in a fallback font.
struct MissingGlyphs
{
    // Ascending: "0-31, 127-159"; a few codes each with its character, "207 "П" (U+041F)".
    // Empty when every code has a glyph.
    std::string codes;
    bool all = false; // no listed code has one: the export would hold nothing real
    // " (the font is encoded in KOI8-R)" for a font in an encoding of its own
    // (FTFont::OwnEncoding) other than the codes', with the codepage to give when none
    // was; empty otherwise.
    std::string encodingNote;
};

// `fonts` are the export's, as ExportCharacter::font indexes them, the main font first;
// `codepage` the one the codes are bytes of, null for none.
MissingGlyphs FindMissingGlyphs(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                                const Codepage* codepage);

// The fonts a missing character was looked for in: "\"Main.ttf\"", or with fallbacks
// "\"Main.ttf\", \"A.ttf\" or \"B.ttf\"".
std::string FontsTried(const std::vector<std::string>& paths);

// The warning for codes without a glyph: "no glyph for 0-31, 127-159; ...", naming
// `fontsTried` when there are fallbacks. Nothing when every code has one.
std::optional<std::string> MissingGlyphWarning(const MissingGlyphs& missing, const std::string& fontsTried);
