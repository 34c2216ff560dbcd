#pragma once

#include "charset/char_code_list.h"
#include "export/kerning/kerning_pair.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

// The nonzero pairs among a list of characters, kept per character after: for each, the
// characters before it that kern with it. Only the pairs there are take room, so a list of
// 20,000 characters costs what its pairs do, not 400 million cells.
class KerningTable
{
public:
    // The pair "list[before] then list[after]"; each index a place in `codes`.
    struct Entry
    {
        uint32_t before;
        uint32_t after;
        int8_t value;
    };

    // `codes` the listed codes, each once, in list order.
    explicit KerningTable(CharCodeList codes);

    // Takes in pairs, in any order; a pair at most once over all calls.
    void Add(const std::vector<Entry>& entries);
    // The pairs of `code` as the character after, in list order of the character before;
    // none for a code that is not listed.
    std::vector<KerningPair> PairsOf(uint32_t code) const;
    size_t Size() const { return codes.size(); }

private:
    struct Before
    {
        uint32_t index;
        int8_t value;
    };

    CharCodeList codes;
    std::unordered_map<uint32_t, uint32_t> indexOf;
    std::vector<std::vector<Before>> before; // per character after, in list order
};
