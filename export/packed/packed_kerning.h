#pragma once

#include "export/packed/packed_font.h"

// Stores the pairs, between glyph indexes of font.glyphBits bits, in `font` as sorted
// pairs or as classes, whichever takes fewer bytes;
// the runtime finds every pair's delta and 0 for any other. No pairs: no kerning.
void PackKerningPairs(const std::vector<PackKerning>& pairs, PackedFont& font);
