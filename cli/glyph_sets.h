#pragma once

#include "charset/codepage.h"
#include "charset/export_characters.h"
#include "cli/export_request.h"

#include <optional>
#include <string>
#include <vector>

// Adds the characters of every --glyphs set to `characters`, set i's with font i + 1, in
// LIST order, under consecutive bytes from BYTE on or, without "=>BYTE", under their
// bytes in `codepage`. Returns the message of the first set that cannot be placed, with
// what it concerns in `context`: a piece of LIST that cannot be read (one ending in "=" with
// a hint to quote the argument), a LIST that names nothing or a character twice, a byte
// that is blank, 0, past 255 or not readable, a character the codepage lacks, a byte that
// another source gives too.
std::optional<std::string> AddGlyphSets(const std::vector<GlyphSetArgument>& sets, const Codepage& codepage,
                                        ExportCharacters& characters, std::vector<std::string>& context);

// Splits "FONT[@PX]:LIST[=>BYTE]" as typed: FONT[@PX] is everything before the last ":".
// Nothing when there is no ":" or either side is empty.
std::optional<GlyphSetArgument> SplitGlyphSet(const std::string& text);
