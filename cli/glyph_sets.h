#pragma once

#include "charset/codepage.h"
#include "charset/export_characters.h"
#include "cli/export_request.h"

#include <optional>
#include <string>
#include <vector>

// Adds the characters of every --glyphs set to `characters`, set i's with font i + 1, in
// LIST order, under consecutive codes from CODE on or, without "=>CODE", under their
// bytes in `codepage` (null: a Unicode font, each under its own code point). Returns the
// message of the first set that cannot be placed, with what it concerns in `context`: a
// piece of LIST that cannot be read (one ending in "=" with a hint to quote the argument),
// a LIST that names nothing, a character twice or no character (a surrogate, past
// U+10FFFF), a code that is blank, 0, not readable or past the font's codes (255 with a
// codepage), a character the codepage lacks, a code that another source gives too.
std::optional<std::string> AddGlyphSets(const std::vector<GlyphSetArgument>& sets, const Codepage* codepage,
                                        ExportCharacters& characters, std::vector<std::string>& context);

// Splits "FONT[#FACE][@PX]:LIST[=>CODE]" as typed: the font is everything before the last ":".
// Nothing when there is no ":" or either side is empty.
std::optional<GlyphSetArgument> SplitGlyphSet(const std::string& text);
