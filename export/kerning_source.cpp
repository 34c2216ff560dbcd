#include "export/kerning_source.h"

#include "export/gpos_kerning.h"
#include "export/harfbuzz_face.h"
#include "export/kerning_pairs.h"

namespace {

// FreeType's kerning lookup, asked afresh for every character.
class LegacyKerning : public KerningSource
{
public:
    LegacyKerning(FTFont& font, const CharCodeList& codes, const Codepage* codepage)
        : font(font), codes(codes), codepage(codepage)
    {
    }

    std::vector<KerningPair> PairsOf(uint32_t code) override
    {
        return codepage ? CollectKerningPairs(font, codes, code, *codepage)
                        : CollectKerningPairs(&font, &codes, code);
    }

private:
    FTFont& font;
    const CharCodeList& codes;
    const Codepage* codepage;
};

// Every character without pairs: written exactly as for a font that has no kerning.
class NoKerning : public KerningSource
{
public:
    std::vector<KerningPair> PairsOf(uint32_t) override { return {}; }
};

} // namespace

std::unique_ptr<KerningSource> MakeKerningSource(FTFont& font, const CharCodeList& codes,
                                                 const ExportOptions& options)
{
    if (options.kerning == KerningMode::None)
        return std::make_unique<NoKerning>();
    if (options.kerning != KerningMode::Legacy) {
        const HarfBuzzFace face(font.Face());
        if (options.kerning == KerningMode::Gpos || face.HasGposKerning())
            return std::make_unique<GposKerning>(face, font.Face()->size->metrics.y_ppem, codes, options);
    }
    return std::make_unique<LegacyKerning>(font, codes, options.codepage);
}

bool HasGposKerning(FT_Face face)
{
    return HarfBuzzFace(face).HasGposKerning();
}
