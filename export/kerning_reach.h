#pragma once

#include "export/harfbuzz_face.h"
#include "export/pair_shaper.h"

#include <span>
#include <vector>

// Which of `characters` the font's 'kern' feature may act on in a pair with any other of
// them. A pair of two characters it cannot act on shapes alike with kerning on and off, so
// its value is 0 without shaping it: a character is out of reach when, in every script the
// shaper has plans for, its glyph is one no substitution and no kerning lookup starts at
// (docs/gpos-kerning-reach.md tells why that is enough). Where that cannot be told (Apple
// layout tables, scripts with shapers of their own, 'kern' changing more than positioning
// lookups), every character is in reach, and every pair is shaped.
std::vector<bool> CharactersKerningMayReach(const HarfBuzzFace& face, const PairShaper& shaper,
                                            std::span<const hb_codepoint_t> characters);
