#include "cli/gpos_kerning_hint.h"

#include "export/kerning/kerning_source.h"

std::optional<std::string> GposOnlyKerningWarning(FTFont& font, const ExportCharacters& characters,
                                                  const ExportOptions& options)
{
    if (FT_HAS_KERNING(font.Face()) || !HasGposKerning(font.Face()))
        return std::nullopt;
    ExportOptions gpos = options;
    gpos.kerning = KerningMode::Gpos;
    const std::unique_ptr<KerningSource> kerning = MakeKerningSource(font, characters, gpos);
    size_t pairs = 0;
    for (const ExportCharacter& listed : characters)
        pairs += kerning->PairsOf(listed.code).size();
    if (pairs == 0)
        return std::nullopt;
    return "the font kerns only through its GPOS table; --kerning auto gives " + std::to_string(pairs) +
           (pairs == 1 ? " pair" : " pairs");
}
