#pragma once

#include "charset/export_characters.h"
#include "export/kerning/harfbuzz_face.h"
#include "export/kerning/kerning_source.h"
#include "export/kerning/kerning_table.h"

// Kerning from the font's OpenType 'kern' feature, as HarfBuzz shapes each pair alone:
// the value of "P then C" is, in whole pixels, (d + 32) >> 6 clamped to -128..127, where d
// is (advance of the first glyph + x offset of the second - x offset of the first) with
// 'kern' on minus the same with it off (see PairShaper for the rest of the shaping). A
// pair counts only when both characters have a glyph and both shapings give exactly two
// glyphs. Every listed character takes part on both sides.
//
// All pairs are worked out once, in the constructor, on as many threads as the machine
// has cores: the export asks for them per character and rotation. Characters whose glyphs
// no lookup can tell apart are not shaped one by one (see gpos_kerning.cpp), so a list of
// 20,000 ideographs costs about what its few hundred kerning glyphs do.
class GposKerning : public KerningSource
{
public:
    // `ppem` is the export height.
    GposKerning(const HarfBuzzFace& face, unsigned ppem, const ExportCharacters& characters);

    std::vector<KerningPair> PairsOf(uint32_t code) override;

private:
    KerningTable table;
};
