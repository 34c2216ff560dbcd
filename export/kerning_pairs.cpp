#include "export/kerning_pairs.h"

#include <algorithm>

namespace {

template <typename Kerning>
std::vector<KerningPair> Collect(const CharCodeList& codes, Kerning kerningBefore)
{
    std::vector<KerningPair> pairs;
    for (uint32_t prevCode : codes) {
        const FT_Pos kerning = kerningBefore(prevCode);
        if (kerning == 0)
            continue;
        const FT_Pos clamped = std::clamp<FT_Pos>(kerning, INT8_MIN, INT8_MAX);
        pairs.push_back(KerningPair{static_cast<char>(prevCode), static_cast<int8_t>(clamped)});
    }
    return pairs;
}

} // namespace

std::vector<KerningPair> CollectKerningPairs(FTFont* font, const CharCodeList* codes, unsigned int code)
{
    // Both sides are cut to char as the generated table stores them.
    const char right = static_cast<char>(code);
    return Collect(*codes, [&](uint32_t prevCode) {
        FT_Vector kerning;
        font->GetKerning(static_cast<char>(prevCode), right, kerning);
        return kerning.x;
    });
}

std::vector<KerningPair> CollectKerningPairs(FTFont& font, const CharCodeList& codes, unsigned int code,
                                             const Codepage& codepage)
{
    const char32_t right = codepage.CharacterOf(static_cast<uint8_t>(code)).value_or(0);
    return Collect(codes, [&](uint32_t prevCode) {
        FT_Vector kerning;
        font.GetCharKerning(codepage.CharacterOf(static_cast<uint8_t>(prevCode)).value_or(0), right, kerning);
        return kerning.x;
    });
}
