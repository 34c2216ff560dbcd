#include "export/kerning/layout_reach.h"

#include "export/kerning/kern_table.h"

#include <hb-ot.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace {

using Set = std::unique_ptr<hb_set_t, decltype(&hb_set_destroy)>;

Set MakeSet()
{
    return Set(hb_set_create(), hb_set_destroy);
}

// A table's bytes, read big-endian; a read past the end gives 0 and marks the table broken.
// So does work beyond a budget in proportion to the table's size: offsets may share a piece,
// and a small table whose pieces point at each other over and over would take forever.
class TableBytes
{
public:
    TableBytes(hb_face_t* face, hb_tag_t tag) : blob(hb_face_reference_table(face, tag))
    {
        unsigned length = 0;
        data = reinterpret_cast<const uint8_t*>(hb_blob_get_data(blob, &length));
        size = length;
        budget = 64 * size + 65536;
    }
    ~TableBytes() { hb_blob_destroy(blob); }
    TableBytes(const TableBytes&) = delete;
    TableBytes& operator=(const TableBytes&) = delete;

    bool Empty() const { return size == 0; }
    bool Broken() const { return broken; }
    std::span<const uint8_t> Span() const { return {data, size}; }

    uint16_t U16(size_t at)
    {
        if (at + 2 > size)
            broken = true;
        if (!Spend(1))
            return 0;
        return static_cast<uint16_t>(data[at] << 8 | data[at + 1]);
    }

    // Takes `work` from the budget; false, and broken, once it is spent.
    bool Spend(size_t work)
    {
        if (work > budget)
            broken = true;
        budget -= std::min(work, budget);
        return !broken;
    }

    uint32_t U32(size_t at) { return static_cast<uint32_t>(U16(at)) << 16 | U16(at + 2); }

private:
    hb_blob_t* blob;
    const uint8_t* data = nullptr;
    size_t size = 0;
    size_t budget = 0;
    bool broken = false;
};

// What HarfBuzz's glyph collection leaves out of a GSUB or GPOS lookup: the lookups its
// context rules call (collected for GSUB only as far as their output goes, for GPOS not at
// all) and the glyphs of its class-based context subtables' classes, of which it collects
// only those of classes a rule names (a rule naming class 0 then matches every glyph outside
// the class definition but not the glyphs of classes no rule names).
class LookupReader
{
public:
    LookupReader(hb_face_t* face, hb_tag_t tag) : table(face, tag), isGsub(tag == HB_OT_TAG_GSUB)
    {
        if (table.Empty())
            return;
        lookupList = table.U16(8);
        lookupCount = table.U16(lookupList);
    }

    unsigned LookupCount() const { return lookupCount; }
    bool Broken() const { return table.Broken(); }

    // Adds to `calls` the lookups `lookup` calls and marks its classed glyphs in `glyphs`.
    void Read(unsigned lookup, std::vector<unsigned>& calls, std::vector<bool>& glyphs)
    {
        const size_t at = lookupList + table.U16(lookupList + 2 + 2 * lookup);
        const unsigned type = table.U16(at);
        const unsigned subtables = table.U16(at + 4);
        for (unsigned i = 0; i < subtables && !Broken(); ++i)
            ReadSubtable(at + table.U16(at + 6 + 2 * i), type, calls, glyphs);
    }

private:
    void ReadSubtable(size_t at, unsigned type, std::vector<unsigned>& calls, std::vector<bool>& glyphs)
    {
        const unsigned extension = isGsub ? 7 : 9;
        if (type == extension) { // the real type and a 32-bit offset; never another extension
            if (table.U16(at + 2) != extension)
                ReadSubtable(at + table.U32(at + 4), table.U16(at + 2), calls, glyphs);
            return;
        }
        const bool context = type == (isGsub ? 5u : 7u);
        const bool chain = type == (isGsub ? 6u : 8u);
        if (!context && !chain)
            return;
        const unsigned format = table.U16(at);
        if (format == 3) {
            // Coverage tables only, then the calls.
            size_t field = at + 2;
            if (context) {
                const unsigned inputs = table.U16(field);
                const unsigned records = table.U16(field + 2);
                return ReadCalls(field + 4 + 2 * inputs, records, calls);
            }
            for (int sequence = 0; sequence < 3; ++sequence) // backtrack, input, lookahead
                field += 2 + 2 * table.U16(field);
            return ReadCalls(field + 2, table.U16(field), calls);
        }
        if (format != 1 && format != 2)
            return; // HarfBuzz applies no other format
        size_t sets = at + 4;
        if (format == 2) {
            const int classDefs = context ? 1 : 3;
            for (int i = 0; i < classDefs; ++i)
                if (const unsigned offset = table.U16(at + 4 + 2 * i))
                    MarkClassed(at + offset, glyphs);
            sets += 2 * classDefs;
        }
        const unsigned setCount = table.U16(sets);
        for (unsigned i = 0; i < setCount && !Broken(); ++i) {
            const unsigned setOffset = table.U16(sets + 2 + 2 * i);
            if (setOffset == 0)
                continue;
            const size_t set = at + setOffset;
            const unsigned rules = table.U16(set);
            for (unsigned r = 0; r < rules && !Broken(); ++r)
                ReadRule(set + table.U16(set + 2 + 2 * r), chain, calls);
        }
    }

    // A rule of a format 1 or 2 subtable: its sequences of glyphs or classes, then the calls.
    void ReadRule(size_t at, bool chain, std::vector<unsigned>& calls)
    {
        if (!chain) {
            const unsigned inputs = table.U16(at);
            const unsigned records = table.U16(at + 2);
            return ReadCalls(at + 4 + 2 * (std::max(inputs, 1u) - 1), records, calls);
        }
        size_t field = at;
        field += 2 + 2 * table.U16(field);                              // backtrack
        field += 2 + 2 * (std::max<unsigned>(table.U16(field), 1) - 1); // input after the first
        field += 2 + 2 * table.U16(field);                              // lookahead
        ReadCalls(field + 2, table.U16(field), calls);
    }

    // `count` records of a sequence index and a lookup index.
    void ReadCalls(size_t at, unsigned count, std::vector<unsigned>& calls)
    {
        for (unsigned i = 0; i < count && !Broken(); ++i)
            calls.push_back(table.U16(at + 4 * i + 2));
    }

    // Every glyph a class definition gives a class other than 0.
    void MarkClassed(size_t at, std::vector<bool>& glyphs)
    {
        auto mark = [&](size_t first, size_t last) {
            const size_t end = std::min(last + 1, glyphs.size());
            if (first < end && table.Spend(end - first))
                std::fill(glyphs.begin() + static_cast<std::ptrdiff_t>(first),
                          glyphs.begin() + static_cast<std::ptrdiff_t>(end), true);
        };
        const unsigned format = table.U16(at);
        if (format == 1) {
            const unsigned start = table.U16(at + 2);
            const unsigned count = table.U16(at + 4);
            for (unsigned i = 0; i < count && !Broken(); ++i)
                if (table.U16(at + 6 + 2 * i) != 0)
                    mark(start + i, start + i);
        } else if (format == 2) {
            const unsigned ranges = table.U16(at + 2);
            for (unsigned i = 0; i < ranges && !Broken(); ++i) {
                const size_t range = at + 4 + 6 * i;
                if (table.U16(range + 4) != 0)
                    mark(table.U16(range), table.U16(range + 2));
            }
        }
    }

    TableBytes table;
    bool isGsub;
    size_t lookupList = 0;
    unsigned lookupCount = 0;
};

// Marks in `glyphs` what the plans' lookups of `tag`, and those they call, reach; false
// when the table does not parse.
bool MarkReached(hb_face_t* face, hb_tag_t tag, std::span<hb_shape_plan_t* const> plans, std::vector<bool>& glyphs)
{
    LookupReader reader(face, tag);
    const Set planned = MakeSet();
    for (hb_shape_plan_t* plan : plans)
        hb_ot_shape_plan_collect_lookups(plan, tag, planned.get());
    std::vector<bool> seen(reader.LookupCount());
    std::vector<unsigned> pending;
    for (hb_codepoint_t lookup = HB_SET_VALUE_INVALID; hb_set_next(planned.get(), &lookup);)
        pending.push_back(lookup);
    const Set reached = MakeSet();
    while (!pending.empty()) {
        const unsigned lookup = pending.back();
        pending.pop_back();
        if (lookup >= seen.size() || seen[lookup])
            continue;
        seen[lookup] = true;
        reader.Read(lookup, pending, glyphs);
        if (reader.Broken())
            return false;
        const Set before = MakeSet(), input = MakeSet(), after = MakeSet(), output = MakeSet();
        hb_ot_layout_lookup_collect_glyphs(face, tag, lookup, before.get(), input.get(), after.get(), output.get());
        for (hb_set_t* set : {before.get(), input.get(), after.get(), output.get()})
            hb_set_union(reached.get(), set);
    }
    for (hb_codepoint_t glyph = HB_SET_VALUE_INVALID; hb_set_next(reached.get(), &glyph);) {
        if (glyph >= glyphs.size())
            glyphs.resize(glyph + 1u);
        glyphs[glyph] = true;
    }
    return true;
}

} // namespace

std::optional<std::vector<bool>> GlyphsLayoutReaches(hb_face_t* face, std::span<hb_shape_plan_t* const> plans)
{
    std::vector<bool> glyphs(hb_face_get_glyph_count(face));
    if (!MarkReached(face, HB_OT_TAG_GSUB, plans, glyphs) || !MarkReached(face, HB_OT_TAG_GPOS, plans, glyphs))
        return std::nullopt;
    const TableBytes kern(face, HB_TAG('k', 'e', 'r', 'n'));
    const KernTableGlyphs kerned = ReadKernTableGlyphs(kern.Span());
    if (kerned.holdsMore)
        return std::nullopt;
    for (const std::vector<bool>* side : {&kerned.first, &kerned.second})
        for (size_t glyph = 0; glyph < side->size(); ++glyph)
            if ((*side)[glyph]) {
                if (glyph >= glyphs.size())
                    glyphs.resize(glyph + 1);
                glyphs[glyph] = true;
            }
    return glyphs;
}
