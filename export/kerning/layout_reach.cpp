#include "export/kerning/layout_reach.h"

#include "export/kerning/kern_table.h"

#include <hb-ot.h>

#include <algorithm>
#include <bit>
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

// A GSUB or GPOS table read for every glyph its lookups can look at: those of coverage
// tables, the glyphs of rules and of the second place of pairs and ligatures, and those a
// class definition of a class-based context or pair subtable gives a class other than 0; and
// the lookups that context rules call. HarfBuzz's own glyph collection leaves out some: it
// follows no called lookup in GPOS and only their output in GSUB; of a class-based context
// subtable it collects the classes a rule names, while a rule naming class 0 matches every
// glyph outside the class definition but not the glyphs of classes no rule names; and it
// stops at a coverage table out of order, whose glyphs its binary search may still find.
// Output glyphs are left out here: a lookup that makes one does not look at it.
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

    // Adds to `calls` the lookups `lookup` calls and marks its glyphs in `glyphs`.
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
        const unsigned format = table.U16(at);
        auto coverage = [&](size_t field) {
            MarkCoverage(at, table.U16(field), glyphs);
        };
        auto coverages = [&](size_t field) { // a count, then that many offsets; past them
            const unsigned count = table.U16(field);
            for (unsigned i = 0; i < count && !Broken(); ++i)
                coverage(field + 2 + 2 * i);
            return field + 2 + 2 * count;
        };
        auto classes = [&](size_t field) {
            MarkClassed(at, table.U16(field), glyphs);
        };
        if (type == (isGsub ? 5u : 7u) || type == (isGsub ? 6u : 8u))
            return ReadContext(at, type == (isGsub ? 6u : 8u), calls, glyphs);
        coverage(at + 2);
        if (isGsub && type == 4) { // ligatures: the components after the first
            ForEachOffset(at, at + 4, [&](size_t set) {
                ForEachOffset(set, set, [&](size_t ligature) {
                    const unsigned components = table.U16(ligature + 2);
                    MarkGlyphs(ligature + 4, std::max(components, 1u) - 1, glyphs);
                });
            });
        } else if (isGsub && type == 8) { // reverse chaining: backtrack and look-ahead coverages
            coverages(coverages(at + 4));
        } else if (!isGsub && type == 2 && format == 1) { // pairs: the second glyph of each
            const unsigned recordSize = 2 * (1 + ValueLength(table.U16(at + 4)) + ValueLength(table.U16(at + 6)));
            ForEachOffset(at, at + 8, [&](size_t set) {
                const unsigned pairs = table.U16(set);
                for (unsigned i = 0; i < pairs && !Broken(); ++i)
                    MarkGlyphs(set + 2 + recordSize * i, 1, glyphs);
            });
        } else if (!isGsub && type == 2 && format == 2) {
            classes(at + 10); // the class definition of the second glyphs
        } else if (!isGsub && type >= 4 && type <= 6) {
            coverage(at + 4); // the base, ligature or mark a mark attaches to
        }
    }

    // A context or chained context subtable.
    void ReadContext(size_t at, bool chain, std::vector<unsigned>& calls, std::vector<bool>& glyphs)
    {
        const unsigned format = table.U16(at);
        if (format == 3) {
            // Coverage tables for every place, then the calls.
            size_t field = at + 2;
            if (!chain) {
                const unsigned inputs = table.U16(field);
                const unsigned records = table.U16(field + 2);
                for (unsigned i = 0; i < inputs && !Broken(); ++i)
                    MarkCoverage(at, table.U16(field + 4 + 2 * i), glyphs);
                return ReadCalls(field + 4 + 2 * inputs, records, calls);
            }
            for (int sequence = 0; sequence < 3; ++sequence) { // backtrack, input, look-ahead
                const unsigned count = table.U16(field);
                for (unsigned i = 0; i < count && !Broken(); ++i)
                    MarkCoverage(at, table.U16(field + 2 + 2 * i), glyphs);
                field += 2 + 2 * count;
            }
            return ReadCalls(field + 2, table.U16(field), calls);
        }
        if (format != 1 && format != 2)
            return; // HarfBuzz applies no other format
        MarkCoverage(at, table.U16(at + 2), glyphs);
        size_t sets = at + 4;
        if (format == 2) {
            const int classDefs = chain ? 3 : 1;
            for (int i = 0; i < classDefs; ++i)
                MarkClassed(at, table.U16(at + 4 + 2 * i), glyphs);
            sets += 2 * classDefs;
        }
        // Rules name glyphs in format 1, classes in format 2.
        std::vector<bool>* named = format == 1 ? &glyphs : nullptr;
        ForEachOffset(at, sets, [&](size_t set) {
            ForEachOffset(set, set, [&](size_t rule) { ReadRule(rule, chain, named, calls); });
        });
    }

    // A rule of a format 1 or 2 subtable: its sequences of glyphs or classes, then the calls.
    void ReadRule(size_t at, bool chain, std::vector<bool>* glyphs, std::vector<unsigned>& calls)
    {
        auto sequence = [&](size_t field, unsigned count) {
            if (glyphs)
                MarkGlyphs(field, count, *glyphs);
            return field + 2 * count;
        };
        if (!chain) {
            const unsigned inputs = table.U16(at);
            const unsigned records = table.U16(at + 2);
            return ReadCalls(sequence(at + 4, std::max(inputs, 1u) - 1), records, calls);
        }
        size_t field = sequence(at + 2, table.U16(at));                           // backtrack
        field = sequence(field + 2, std::max<unsigned>(table.U16(field), 1) - 1); // input after the first
        field = sequence(field + 2, table.U16(field));                            // look-ahead
        ReadCalls(field + 2, table.U16(field), calls);
    }

    // `count` records of a sequence index and a lookup index.
    void ReadCalls(size_t at, unsigned count, std::vector<unsigned>& calls)
    {
        for (unsigned i = 0; i < count && !Broken(); ++i)
            calls.push_back(table.U16(at + 4 * i + 2));
    }

    // The offsets from `base` counted at `field` and listed after it, null ones left out.
    template <typename Visit>
    void ForEachOffset(size_t base, size_t field, Visit visit)
    {
        const unsigned count = table.U16(field);
        for (unsigned i = 0; i < count && !Broken(); ++i)
            if (const unsigned offset = table.U16(field + 2 + 2 * i))
                visit(base + offset);
    }

    // The 16-bit fields of a value record of `format`.
    static unsigned ValueLength(unsigned format) { return static_cast<unsigned>(std::popcount(format)); }

    void MarkGlyphs(size_t at, unsigned count, std::vector<bool>& glyphs)
    {
        for (unsigned i = 0; i < count && !Broken(); ++i)
            Mark(table.U16(at + 2 * i), table.U16(at + 2 * i), glyphs);
    }

    void Mark(size_t first, size_t last, std::vector<bool>& glyphs)
    {
        if (first > last || !table.Spend(last - first + 1))
            return;
        if (last >= glyphs.size()) // past the face's glyph count, as a broken face may say
            glyphs.resize(last + 1);
        std::fill(glyphs.begin() + static_cast<std::ptrdiff_t>(first),
                  glyphs.begin() + static_cast<std::ptrdiff_t>(last) + 1, true);
    }

    // Every glyph of the coverage table at `offset` from `base`, in whatever order.
    void MarkCoverage(size_t base, unsigned offset, std::vector<bool>& glyphs)
    {
        if (offset == 0)
            return;
        const size_t at = base + offset;
        const unsigned format = table.U16(at);
        const unsigned count = table.U16(at + 2);
        if (format == 1)
            MarkGlyphs(at + 4, count, glyphs);
        else if (format == 2)
            for (unsigned i = 0; i < count && !Broken(); ++i)
                Mark(table.U16(at + 4 + 6 * i), table.U16(at + 6 + 6 * i), glyphs);
    }

    // Every glyph the class definition at `offset` from `base` gives a class other than 0.
    void MarkClassed(size_t base, unsigned offset, std::vector<bool>& glyphs)
    {
        if (offset == 0)
            return;
        const size_t at = base + offset;
        const unsigned format = table.U16(at);
        if (format == 1) {
            const unsigned start = table.U16(at + 2);
            const unsigned count = table.U16(at + 4);
            for (unsigned i = 0; i < count && !Broken(); ++i)
                if (table.U16(at + 6 + 2 * i) != 0)
                    Mark(start + i, start + i, glyphs);
        } else if (format == 2) {
            const unsigned ranges = table.U16(at + 2);
            for (unsigned i = 0; i < ranges && !Broken(); ++i) {
                const size_t range = at + 4 + 6 * i;
                if (table.U16(range + 4) != 0)
                    Mark(table.U16(range), table.U16(range + 2), glyphs);
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
