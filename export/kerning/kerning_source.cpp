#include "export/kerning/kerning_source.h"

#include "export/kerning/gpos_kerning.h"
#include "export/kerning/harfbuzz_face.h"
#include "export/kerning/legacy_kerning.h"

#include <algorithm>

namespace {

// FreeType's kerning lookup, asked afresh for every character: between the characters
// of a codepage's bytes, or as the desktop program asks it for codes that are characters.
class LegacyKerning : public KerningSource
{
public:
    LegacyKerning(FTFont& font, const ExportCharacters& characters, LegacyLookup lookup)
        : font(font), characters(characters), byCharacter(lookup == LegacyLookup::ByCharacter)
    {
        for (const ExportCharacter& listed : characters)
            codes.push_back(listed.code);
    }

    std::vector<KerningPair> PairsOf(uint32_t code) override
    {
        if (!byCharacter)
            return CollectKerningPairs(&font, &codes, code);
        const auto listed = std::find_if(characters.begin(), characters.end(),
                                         [code](const ExportCharacter& c) { return c.code == code; });
        return CollectKerningPairs(font, characters, *listed);
    }

private:
    FTFont& font;
    const ExportCharacters& characters;
    CharCodeList codes;
    bool byCharacter;
};

// Every character without pairs: written exactly as for a font that has no kerning.
class NoKerning : public KerningSource
{
public:
    std::vector<KerningPair> PairsOf(uint32_t) override { return {}; }
};

} // namespace

std::unique_ptr<KerningSource> MakeKerningSource(FTFont& font, const ExportCharacters& characters,
                                                 const ExportOptions& options, LegacyLookup lookup)
{
    if (options.kerning == KerningMode::None)
        return std::make_unique<NoKerning>();
    if (options.kerning != KerningMode::Legacy) {
        const HarfBuzzFace face(font.Face());
        if (options.kerning == KerningMode::Gpos || face.HasGposKerning())
            return std::make_unique<GposKerning>(face, font.Face()->size->metrics.y_ppem, characters);
    }
    if (options.codepage != nullptr)
        lookup = LegacyLookup::ByCharacter;
    return std::make_unique<LegacyKerning>(font, characters, lookup);
}

KerningByFont::KerningByFont(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                             const ExportOptions& options)
    : charactersOf(fonts.size())
{
    for (const ExportCharacter& character : characters)
        charactersOf.at(character.font).push_back(character);
    // The main font's as the desktop reads them; another font's characters may stand
    // under other codes.
    for (size_t font = 0; font < fonts.size(); ++font)
        sources.push_back(MakeKerningSource(*fonts[font], charactersOf[font], options,
                                            font == 0 ? LegacyLookup::AsDesktop : LegacyLookup::ByCharacter));
}

std::vector<KerningPair> KerningByFont::PairsOf(const ExportCharacter& character) const
{
    return sources.at(character.font)->PairsOf(character.code);
}

bool HasGposKerning(FT_Face face)
{
    return HarfBuzzFace(face).HasGposKerning();
}
