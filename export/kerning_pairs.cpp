#include "export/kerning_pairs.h"

#include <algorithm>

std::vector<KerningPair> CollectKerningPairs(FTFont* font, const CharCodeList* codes, unsigned int code)
{
    std::vector<KerningPair> pairs;
    // Both sides are cut to char as the generated table stores them; GetKerning then
    // sign-extends, so only 7-bit characters find real kerning.
    const char right = static_cast<char>(code);
    for (uint32_t prevCode : *codes) {
        const char left = static_cast<char>(prevCode);
        FT_Vector kerning;
        font->GetKerning(left, right, kerning);
        if (kerning.x == 0)
            continue;
        const FT_Pos clamped = std::clamp<FT_Pos>(kerning.x, INT8_MIN, INT8_MAX);
        pairs.push_back(KerningPair{left, static_cast<int8_t>(clamped)});
    }
    return pairs;
}
