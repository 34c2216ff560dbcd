#include "export/exportable_codes.h"

#include <bitset>
#include <unordered_set>

std::optional<std::string> FindUnexportableCode(const CharCodeList& codes)
{
    for (uint32_t code : codes) {
        if (code > 255)
            return "Character code " + std::to_string(code) + " is above 255 and cannot be exported !";
    }
    return std::nullopt;
}

CharCodeList WithoutRepeats(const CharCodeList& codes)
{
    CharCodeList unique;
    std::bitset<256> seen;
    std::unordered_set<uint32_t> seenWide; // stays empty for every exportable list
    for (uint32_t code : codes) {
        const bool first = code < seen.size() ? !seen.test(code) : seenWide.insert(code).second;
        if (code < seen.size())
            seen.set(code);
        if (first)
            unique.push_back(code);
    }
    return unique;
}
