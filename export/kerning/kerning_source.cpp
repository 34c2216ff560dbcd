#include "export/kerning/kerning_source.h"

#include "export/kerning/gpos_kerning.h"
#include "export/kerning/harfbuzz_face.h"
#include "export/kerning/legacy_kerning.h"

#include <algorithm>

namespace {

// FreeType's kerning lookup as the desktop program asks it, afresh for every character:
// between codes cut to char, taken as characters.
class DesktopLegacyKerning : public KerningSource
{
public:
    DesktopLegacyKerning(FTFont& font, const ExportCharacters& characters) : font(font)
    {
        for (const ExportCharacter& listed : characters)
            codes.push_back(listed.code);
    }

    std::vector<KerningPair> PairsOf(uint32_t code) override { return CollectKerningPairs(&font, &codes, code); }

private:
    FTFont& font;
    CharCodeList codes;
};

// FreeType's kerning lookup between the characters the codes stand for, worked out once.
class LegacyKerning : public KerningSource
{
public:
    LegacyKerning(FTFont& font, const ExportCharacters& characters) : table(CodesOf(characters))
    {
        table.Add(CollectKerningPairs(font, characters));
    }

    std::vector<KerningPair> PairsOf(uint32_t code) override { return table.PairsOf(code); }

private:
    static CharCodeList CodesOf(const ExportCharacters& characters)
    {
        CharCodeList codes;
        for (const ExportCharacter& listed : characters)
            codes.push_back(listed.code);
        return codes;
    }

    KerningTable table;
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
    const bool bytes = std::all_of(characters.begin(), characters.end(),
                                   [](const ExportCharacter& listed) { return listed.code <= 0xFF; });
    // A Unicode packed font's codes are characters, which the desktop's bytes are not.
    const bool unicode = options.format == FontFormat::Packed && options.packed.keys == packed::Keys::Unicode;
    if (lookup == LegacyLookup::AsDesktop && options.codepage == nullptr && bytes && !unicode)
        return std::make_unique<DesktopLegacyKerning>(font, characters);
    return std::make_unique<LegacyKerning>(font, characters);
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
