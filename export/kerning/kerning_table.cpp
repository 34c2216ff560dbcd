#include "export/kerning/kerning_table.h"

#include <algorithm>

KerningTable::KerningTable(CharCodeList codes) : codes(std::move(codes)), before(this->codes.size())
{
    indexOf.reserve(this->codes.size());
    for (size_t i = 0; i < this->codes.size(); ++i)
        indexOf.emplace(this->codes[i], static_cast<uint32_t>(i));
}

void KerningTable::Add(const std::vector<Entry>& entries)
{
    std::vector<uint32_t> touched;
    for (const Entry& entry : entries) {
        std::vector<Before>& list = before.at(entry.after);
        if (list.empty() || list.back().index > entry.before)
            touched.push_back(entry.after);
        list.push_back({entry.before, entry.value});
    }
    std::sort(touched.begin(), touched.end());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
    for (uint32_t after : touched)
        std::sort(before[after].begin(), before[after].end(),
                  [](const Before& a, const Before& b) { return a.index < b.index; });
}

std::vector<KerningPair> KerningTable::PairsOf(uint32_t code) const
{
    std::vector<KerningPair> pairs;
    const auto found = indexOf.find(code);
    if (found == indexOf.end())
        return pairs;
    pairs.reserve(before[found->second].size());
    for (const Before& pair : before[found->second])
        pairs.push_back({codes[pair.index], pair.value});
    return pairs;
}
