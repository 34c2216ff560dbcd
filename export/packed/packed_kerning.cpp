#include "export/packed/packed_kerning.h"

#include "export/packed/bit_writer.h"

#include <algorithm>
#include <map>

namespace {

struct DeltaCoding
{
    int min = 0;
    unsigned bits = 0;
};

// The deltas less their minimum, 0 among them: a class table's cell without a pair holds 0.
DeltaCoding CodingOf(const std::vector<PackKerning>& pairs)
{
    int min = 0, max = 0;
    for (const PackKerning& pair : pairs) {
        min = std::min<int>(min, pair.delta);
        max = std::max<int>(max, pair.delta);
    }
    return {min, BitWriter::BitsFor(static_cast<unsigned>(max - min))};
}

// Pairs sorted by right code, then left code.
BitWriter PairList(std::vector<PackKerning> pairs, const DeltaCoding& deltas)
{
    std::sort(pairs.begin(), pairs.end(), [](const PackKerning& a, const PackKerning& b) {
        return std::pair(a.right, a.left) < std::pair(b.right, b.left);
    });
    BitWriter out;
    for (const PackKerning& pair : pairs) {
        out.Write(pair.right, 8);
        out.Write(pair.left, 8);
        out.Write(static_cast<unsigned>(pair.delta - deltas.min), deltas.bits);
    }
    return out;
}

// Codes that kern alike share a class: the map from each code to its class.
using ClassMap = std::map<uint8_t, unsigned>;

// Groups the codes of one side by the deltas they have with every code of the other.
template <typename Key>
ClassMap GroupCodes(const std::map<uint8_t, std::map<Key, int8_t>>& deltasByCode, unsigned& classes)
{
    std::map<std::map<Key, int8_t>, unsigned> classOf;
    ClassMap map;
    for (const auto& [code, deltas] : deltasByCode) {
        auto [at, added] = classOf.emplace(deltas, static_cast<unsigned>(classOf.size()));
        map[code] = at->second;
    }
    classes = static_cast<unsigned>(classOf.size());
    return map;
}

struct ClassTable
{
    BitWriter bits;
    uint32_t rights = 0;
    uint32_t deltas = 0;
    std::array<unsigned, 2> entries{};
    std::array<unsigned, 2> classBits{};
    unsigned columns = 0;
};

// Left codes grouped by their deltas against each right code; right codes by their
// deltas against each left class; one delta for each pair of classes.
ClassTable ClassesOf(const std::vector<PackKerning>& pairs, const DeltaCoding& deltas)
{
    std::map<uint8_t, std::map<uint8_t, int8_t>> byLeft;
    for (const PackKerning& pair : pairs)
        byLeft[pair.left][pair.right] = pair.delta;
    unsigned leftClasses = 0;
    const ClassMap leftMap = GroupCodes(byLeft, leftClasses);
    std::map<uint8_t, std::map<unsigned, int8_t>> byRight;
    for (const PackKerning& pair : pairs)
        byRight[pair.right][leftMap.at(pair.left)] = pair.delta;
    ClassTable table;
    const ClassMap rightMap = GroupCodes(byRight, table.columns);

    std::vector<int> cells(size_t{leftClasses} * table.columns, 0);
    for (const PackKerning& pair : pairs)
        cells[leftMap.at(pair.left) * table.columns + rightMap.at(pair.right)] = pair.delta;

    table.entries = {static_cast<unsigned>(leftMap.size()), static_cast<unsigned>(rightMap.size())};
    table.classBits = {BitWriter::BitsFor(leftClasses - 1), BitWriter::BitsFor(table.columns - 1)};
    for (const auto& [code, leftClass] : leftMap) {
        table.bits.Write(code, 8);
        table.bits.Write(leftClass, table.classBits[0]);
    }
    table.rights = static_cast<uint32_t>(table.bits.Size());
    for (const auto& [code, rightClass] : rightMap) {
        table.bits.Write(code, 8);
        table.bits.Write(rightClass, table.classBits[1]);
    }
    table.deltas = static_cast<uint32_t>(table.bits.Size());
    for (int delta : cells)
        table.bits.Write(static_cast<unsigned>(delta - deltas.min), deltas.bits);
    return table;
}

} // namespace

void PackKerningPairs(const std::vector<PackKerning>& pairs, PackedFont& font)
{
    font.kerningForm = packed::KerningForm::None;
    font.kerning.clear();
    if (pairs.empty())
        return;
    const DeltaCoding deltas = CodingOf(pairs);
    font.kerningDeltaMin = deltas.min;
    font.kerningDeltaBits = deltas.bits;
    BitWriter list = PairList(pairs, deltas);
    ClassTable classes = ClassesOf(pairs, deltas);
    // The runtime counts pairs in 16 bits.
    if (pairs.size() <= 0xFFFF && list.Bytes().size() <= classes.bits.Bytes().size()) {
        font.kerningForm = packed::KerningForm::Pairs;
        font.kerningEntries = {static_cast<unsigned>(pairs.size()), 0};
        font.kerning = list.Bytes();
        return;
    }
    font.kerningForm = packed::KerningForm::Classes;
    font.kerning = classes.bits.Bytes();
    font.kerningRights = classes.rights;
    font.kerningDeltas = classes.deltas;
    font.kerningEntries = classes.entries;
    font.kerningClassBits = classes.classBits;
    font.kerningColumns = classes.columns;
}
