#include "export/kerning_source.h"

#include "export/gpos_kerning.h"
#include "export/harfbuzz_face.h"
#include "export/kerning_pairs.h"

#include <algorithm>

namespace {

// FreeType's kerning lookup, asked afresh for every character: between the characters
// of a codepage's bytes, or as the desktop program asks it for codes that are characters.
class LegacyKerning : public KerningSource
{
public:
    LegacyKerning(FTFont& font, const ExportCharacters& characters, const Codepage* codepage)
        : font(font), characters(characters), byCodepage(codepage != nullptr)
    {
        for (const auto& [code, character] : characters)
            codes.push_back(code);
    }

    std::vector<KerningPair> PairsOf(uint32_t code) override
    {
        if (!byCodepage)
            return CollectKerningPairs(&font, &codes, code);
        const auto listed = std::find_if(characters.begin(), characters.end(),
                                         [code](const ExportCharacter& c) { return c.code == code; });
        return CollectKerningPairs(font, characters, *listed);
    }

private:
    FTFont& font;
    const ExportCharacters& characters;
    CharCodeList codes;
    bool byCodepage;
};

// Every character without pairs: written exactly as for a font that has no kerning.
class NoKerning : public KerningSource
{
public:
    std::vector<KerningPair> PairsOf(uint32_t) override { return {}; }
};

} // namespace

std::unique_ptr<KerningSource> MakeKerningSource(FTFont& font, const ExportCharacters& characters,
                                                 const ExportOptions& options)
{
    if (options.kerning == KerningMode::None)
        return std::make_unique<NoKerning>();
    if (options.kerning != KerningMode::Legacy) {
        const HarfBuzzFace face(font.Face());
        if (options.kerning == KerningMode::Gpos || face.HasGposKerning())
            return std::make_unique<GposKerning>(face, font.Face()->size->metrics.y_ppem, characters);
    }
    return std::make_unique<LegacyKerning>(font, characters, options.codepage);
}

bool HasGposKerning(FT_Face face)
{
    return HarfBuzzFace(face).HasGposKerning();
}
