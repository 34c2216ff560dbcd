#include "export/packed/packed_kerning.h"

#include "export/packed/bit_writer.h"

#include <algorithm>
#include <map>
#include <optional>

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

// Pairs sorted by right glyph, then left glyph.
BitWriter PairList(std::vector<PackKerning> pairs, const DeltaCoding& deltas, unsigned glyphBits)
{
    std::sort(pairs.begin(), pairs.end(), [](const PackKerning& a, const PackKerning& b) {
        return std::pair(a.right, a.left) < std::pair(b.right, b.left);
    });
    BitWriter out;
    for (const PackKerning& pair : pairs) {
        out.Write(pair.right, glyphBits);
        out.Write(pair.left, glyphBits);
        out.Write(static_cast<unsigned>(pair.delta - deltas.min), deltas.bits);
    }
    return out;
}

// Glyphs that kern alike share a class: the map from each glyph to its class.
using ClassMap = std::map<uint32_t, unsigned>;

// Groups the glyphs of one side by the deltas they have with every glyph of the other.
template <typename Key>
ClassMap GroupCodes(const std::map<uint32_t, std::map<Key, int8_t>>& deltasByCode, unsigned& classes)
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

// Left glyphs grouped by their deltas against each right glyph; right glyphs by their
// deltas against each left class; one delta for each pair of classes. Nothing when the
// deltas alone would take more than `maxBits`.
std::optional<ClassTable> ClassesOf(const std::vector<PackKerning>& pairs, const DeltaCoding& deltas,
                                    unsigned glyphBits, uint64_t maxBits)
{
    std::map<uint32_t, std::map<uint32_t, int8_t>> byLeft;
    for (const PackKerning& pair : pairs)
        byLeft[pair.left][pair.right] = pair.delta;
    unsigned leftClasses = 0;
    const ClassMap leftMap = GroupCodes(byLeft, leftClasses);
    std::map<uint32_t, std::map<unsigned, int8_t>> byRight;
    for (const PackKerning& pair : pairs)
        byRight[pair.right][leftMap.at(pair.left)] = pair.delta;
    ClassTable table;
    const ClassMap rightMap = GroupCodes(byRight, table.columns);
    if (uint64_t{leftClasses} * table.columns * deltas.bits > maxBits)
        return std::nullopt;

    std::vector<int> cells(size_t{leftClasses} * table.columns, 0);
    for (const PackKerning& pair : pairs)
        cells[leftMap.at(pair.left) * table.columns + rightMap.at(pair.right)] = pair.delta;

    table.entries = {static_cast<unsigned>(leftMap.size()), static_cast<unsigned>(rightMap.size())};
    table.classBits = {BitWriter::BitsFor(leftClasses - 1), BitWriter::BitsFor(table.columns - 1)};
    for (const auto& [code, leftClass] : leftMap) {
        table.bits.Write(code, glyphBits);
        table.bits.Write(leftClass, table.classBits[0]);
    }
    table.rights = static_cast<uint32_t>(table.bits.Size());
    for (const auto& [code, rightClass] : rightMap) {
        table.bits.Write(code, glyphBits);
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
    BitWriter list = PairList(pairs, deltas, font.glyphBits);
    const std::optional<ClassTable> classes = ClassesOf(pairs, deltas, font.glyphBits, list.Size());
    // The runtime counts a table's right classes in 16 bits.
    if (!classes || classes->columns > 0xFFFF || list.Bytes().size() <= classes->bits.Bytes().size()) {
        font.kerningForm = packed::KerningForm::Pairs;
        font.kerningEntries = {static_cast<unsigned>(pairs.size()), 0};
        font.kerning = list.Bytes();
        return;
    }
    font.kerningForm = packed::KerningForm::Classes;
    font.kerning = classes->bits.Bytes();
    font.kerningRights = classes->rights;
    font.kerningDeltas = classes->deltas;
    font.kerningEntries = classes->entries;
    font.kerningClassBits = classes->classBits;
    font.kerningColumns = classes->columns;
}
