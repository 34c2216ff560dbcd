#include "cli/gpos_kerning_hint.h"

#include "export/kerning_source.h"

#include <array>

std::optional<std::string> GposOnlyKerningWarning(FTFont& font, const CharCodeList& codes,
                                                  const ExportOptions& options)
{
    if (FT_HAS_KERNING(font.Face()) || !HasGposKerning(font.Face()))
        return std::nullopt;
    // The list as the export writes it: each code once, at its first place.
    CharCodeList unique;
    std::array<bool, 256> seen{};
    for (uint32_t code : codes) {
        if (!seen[code])
            unique.push_back(code);
        seen[code] = true;
    }
    ExportOptions gpos;
    gpos.kerning = KerningMode::Gpos;
    gpos.codepage = options.codepage;
    const std::unique_ptr<KerningSource> kerning = MakeKerningSource(font, unique, gpos);
    size_t pairs = 0;
    for (uint32_t code : unique)
        pairs += kerning->PairsOf(code).size();
    if (pairs == 0)
        return std::nullopt;
    return "the font kerns only through its GPOS table; --kerning auto gives " + std::to_string(pairs) +
           (pairs == 1 ? " pair" : " pairs");
}
