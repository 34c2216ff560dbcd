#pragma once

#include "charset/char_code_list.h"
#include "charset/export_characters.h"
#include "export/kerning/kerning_pair.h"
#include "raster/ft_font.h"

#include <vector>

// The kerning pairs of `code` with every code of `codes` as the character before it
// (codes listed after `code`, and `code` itself, included), in list order, zero
// kerning left out. The face must be set to the export size. Both codes are cut to
// char and widened with sign extension, so only 7-bit characters find real kerning.
// Kerning beyond the 8-bit delta's range is clamped to -128..127.
std::vector<KerningPair> CollectKerningPairs(FTFont* font, const CharCodeList* codes, unsigned int code);

// The same for `current` after every one of `characters`, looked up between the characters
// the codes stand for.
std::vector<KerningPair> CollectKerningPairs(FTFont& font, const ExportCharacters& characters,
                                             const ExportCharacter& current);
