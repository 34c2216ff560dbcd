#include "export/kerning/legacy_kerning.h"

#include <algorithm>

namespace {

// Kerning beyond the 8-bit delta's range is clamped.
int8_t Clamped(FT_Pos kerning)
{
    return static_cast<int8_t>(std::clamp<FT_Pos>(kerning, INT8_MIN, INT8_MAX));
}

} // namespace

std::vector<KerningPair> CollectKerningPairs(FTFont* font, const CharCodeList* codes, unsigned int code)
{
    // Both sides are cut to char as the generated table stores them.
    const char right = static_cast<char>(code);
    std::vector<KerningPair> pairs;
    for (uint32_t prevCode : *codes) {
        FT_Vector kerning;
        font->GetKerning(static_cast<char>(prevCode), right, kerning);
        if (kerning.x != 0)
            pairs.push_back(KerningPair{prevCode, Clamped(kerning.x)});
    }
    return pairs;
}

std::vector<KerningPair> CollectKerningPairs(FTFont& font, const ExportCharacters& characters,
                                             const ExportCharacter& current)
{
    std::vector<KerningPair> pairs;
    for (const ExportCharacter& prev : characters) {
        FT_Vector kerning;
        font.GetCharKerning(prev.character, current.character, kerning);
        if (kerning.x != 0)
            pairs.push_back(KerningPair{prev.code, Clamped(kerning.x)});
    }
    return pairs;
}
