#pragma once

#include "charset/char_code_list.h"
#include "charset/export_characters.h"
#include "export/kerning/kerning_pair.h"
#include "export/kerning/kerning_table.h"
#include "raster/ft_font.h"

#include <cstdint>
#include <vector>

// The kerning pairs of `code` with every code of `codes` as the character before it
// (codes listed after `code`, and `code` itself, included), in list order, zero
// kerning left out. The face must be set to the export size. Both codes are cut to
// char and widened with sign extension, so only 7-bit characters find real kerning.
// Kerning beyond the 8-bit delta's range is clamped to -128..127.
std::vector<KerningPair> CollectKerningPairs(FTFont* font, const CharCodeList* codes, uint32_t code);

// Every nonzero pair of `characters`, looked up between the characters the codes stand for,
// each clamped the same way; indexes into `characters`. FreeType is asked only about pairs
// it can kern: none for a face without kerning, and for an sfnt face only pairs whose glyphs
// both stand in its 'kern' table.
std::vector<KerningTable::Entry> CollectKerningPairs(FTFont& font, const ExportCharacters& characters);
