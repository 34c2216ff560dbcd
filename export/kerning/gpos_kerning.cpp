#include "export/kerning/gpos_kerning.h"

#include "export/kerning/layout_reach.h"
#include "export/kerning/pair_shaper.h"

#include <hb-ot.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <system_error>
#include <thread>
#include <tuple>

namespace {

using Entry = KerningTable::Entry;

// A pair's value from its shapings with kerning on and off, by the definition.
int8_t ValueOf(const ShapedText& kerned, const ShapedText& unkerned)
{
    if (kerned.glyphCount != 2 || unkerned.glyphCount != 2)
        return 0;
    return static_cast<int8_t>(std::clamp((kerned.distance - unkerned.distance + 32) >> 6, -128, 127));
}

// Whether the shapers of KernsByGlyph scripts tell the character apart from another of its
// script and general category only by its glyph: not a mark, a control, a format character
// (the default ignorables among them) or unassigned, none of those that join the cluster
// before them, not the fraction slash, and no conjoining Hangul jamo.
bool ShapedByItsGlyph(hb_codepoint_t character)
{
    switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), character)) {
    case HB_UNICODE_GENERAL_CATEGORY_CONTROL:
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT:
    case HB_UNICODE_GENERAL_CATEGORY_UNASSIGNED:
    case HB_UNICODE_GENERAL_CATEGORY_SURROGATE:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
        return false;
    default:
        break;
    }
    auto within = [character](hb_codepoint_t first, hb_codepoint_t last) {
        return first <= character && character <= last;
    };
    return character != 0x2044 && !within(0xFF9E, 0xFF9F) && !within(0x1F1E6, 0x1F1FF) && !within(0x1F3FB, 0x1F3FF) &&
           !within(0x1100, 0x11FF) && !within(0xA960, 0xA97F) && !within(0xD7B0, 0xD7FF);
}

// Scripts whose shaper tells two characters with glyphs apart by their glyphs and general
// categories alone, but for those ShapedByItsGlyph leaves out: the default shaper's
// (ShapedPlainly), and Hangul's, which besides composes and decomposes conjoining jamo and
// the syllables before a trailing jamo, and moves tone marks (marks, to Unicode).
bool KernsByGlyph(hb_script_t script)
{
    return ShapedPlainly(script) || script == HB_SCRIPT_HANGUL;
}

// The value of every ordered pair of the characters.
//
// Shaping each pair alone, with kerning on and off, is the definition. Two shortcuts give the
// same values in a fraction of the time:
//
// Crowds. Take the characters whose glyphs no lookup the shaping applies can reach
// (GlyphsLayoutReaches), of a KernsByGlyph script or of none, that are ShapedByItsGlyph and
// whose glyphs are no GDEF marks (which lookups skip by mark class and mark set too).
// Lookups move none of them, and nothing else does in those scripts' shapers, so two of
// them kern 0. And in a pair with any other character that is ShapedByItsGlyph, where both
// orders get a KernsByGlyph script, one of them shapes as any other of its crowd: of the
// same script (which the pair's script follows), general category (which the shaper reads)
// and GDEF glyph class (which lookups skip by). A crowd's pairs with such a character are
// shaped once, with the crowd's first member, and stand for all of its members. Every other
// character with a glyph is distinct: shaped with every other, in the texts below.
//
// Texts. Each distinct character P shapes, once with kerning on and once off, a text of its
// pairs both ways, "P C1 P C2 ... P Ck P": a pair whose both ends HarfBuzz marks safe to
// break shapes there as it does alone. Only the others are shaped alone.
class PairTable
{
public:
    PairTable(const HarfBuzzFace& face, unsigned ppem, std::vector<hb_codepoint_t> characters)
        : shaper(face, ppem, characters), characters(std::move(characters)), count(this->characters.size())
    {
        std::vector<hb_codepoint_t> glyphs;
        for (hb_codepoint_t character : this->characters)
            glyphs.push_back(shaper.NominalGlyph(character));
        std::optional<std::vector<bool>> reached;
        if (!face.HasAppleLayout())
            reached = GlyphsLayoutReaches(face.Get(), shaper.ShapePlans());
        std::map<std::tuple<hb_script_t, hb_unicode_general_category_t, unsigned>, size_t> crowdOf;
        for (size_t i = 0; i < count; ++i) {
            const hb_codepoint_t glyph = glyphs[i];
            if (glyph == 0)
                continue; // a character without a glyph kerns with none
            const hb_codepoint_t character = this->characters[i];
            const hb_script_t script = CharacterScript(character);
            const unsigned glyphClass = hb_ot_layout_get_glyph_class(face.Get(), glyph);
            if (!reached || glyph >= reached->size() || (*reached)[glyph] || !ShapedByItsGlyph(character) ||
                (script != HB_SCRIPT_UNKNOWN && !KernsByGlyph(script)) || glyphClass == HB_OT_LAYOUT_GLYPH_CLASS_MARK) {
                distinct.push_back(static_cast<uint32_t>(i));
                continue;
            }
            const auto key = std::make_tuple(
                script, hb_unicode_general_category(hb_unicode_funcs_get_default(), character), glyphClass);
            const auto [crowd, added] = crowdOf.emplace(key, crowds.size());
            if (added)
                crowds.emplace_back();
            crowds[crowd->second].push_back(static_cast<uint32_t>(i));
        }
    }

    // Every nonzero pair.
    std::vector<Entry> Compute()
    {
        // Rows go to whichever thread asks next, so a thread that starts late simply takes fewer.
        std::atomic<size_t> nextRow = 0;
        std::mutex gathering;
        std::vector<Entry> all;
        auto computeRows = [&] {
            const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                                    hb_buffer_destroy);
            std::vector<Entry> entries;
            for (size_t row; (row = nextRow++) < distinct.size();)
                ComputeRow(buffer.get(), distinct[row], entries);
            const std::lock_guard<std::mutex> hold(gathering);
            all.insert(all.end(), entries.begin(), entries.end());
        };
        std::vector<std::jthread> helpers;
        try {
            while (helpers.size() + 1 < std::clamp(std::thread::hardware_concurrency(), 1u, 8u))
                helpers.emplace_back(computeRows);
        } catch (const std::system_error&) {
            // No more threads: those running take all rows.
        }
        computeRows();
        helpers.clear(); // joins
        return all;
    }

private:
    // A character P is shaped with in its row: `stands` for the characters whose pairs with P
    // it gives, itself or its crowd; the pair "P C" taken from this text when `after`, "C P"
    // when `before`.
    struct Column
    {
        uint32_t character;
        std::span<const uint32_t> stands;
        bool after;
        bool before;
    };

    // Distinct character P's texts, one per script: "P C1 P C2 ... P Ck P" holds the pairs
    // "P Ci", and "Ci P" where that gets the text's script. A distinct Ci's pairs with P
    // come from P's row, or the row of whichever of the two comes first in the list when
    // both orders get one script. A crowd's pairs come from the rows of the distinct.
    void ComputeRow(hb_buffer_t* buffer, uint32_t first, std::vector<Entry>& entries)
    {
        const hb_codepoint_t character = characters[first];
        std::vector<Column> columns;
        std::vector<hb_codepoint_t> text;
        for (hb_script_t script : shaper.Scripts()) {
            columns.clear();
            auto add = [&](uint32_t second, std::span<const uint32_t> stands, bool after, bool before) {
                if (after || before)
                    columns.push_back({second, stands, after, before});
            };
            for (const uint32_t& second : distinct) {
                const bool sameBothWays = SameScriptBothWays(character, characters[second]);
                if (PairScript(character, characters[second]) == script && (second >= first || !sameBothWays))
                    add(second, {&second, 1}, true, sameBothWays && second != first);
            }
            for (const std::vector<uint32_t>& crowd : crowds) {
                if (StandsForCrowd(character, characters[crowd.front()])) {
                    add(crowd.front(), crowd, PairScript(character, characters[crowd.front()]) == script,
                        PairScript(characters[crowd.front()], character) == script);
                    continue;
                }
                for (const uint32_t& second : crowd)
                    add(second, {&second, 1}, PairScript(character, characters[second]) == script,
                        PairScript(characters[second], character) == script);
            }
            if (columns.empty())
                continue;
            text.assign(1, character);
            for (const Column& column : columns) {
                text.push_back(characters[column.character]);
                text.push_back(character);
            }
            const auto kerned = shaper.ShapeNeighbours(buffer, text, script, Kerning::On);
            const auto unkerned = shaper.ShapeNeighbours(buffer, text, script, Kerning::Off);
            auto valueOf = [&](size_t pair, hb_codepoint_t before, hb_codepoint_t after) {
                return kerned[pair] && unkerned[pair] ? ValueOf(*kerned[pair], *unkerned[pair])
                                                      : ValueOf(shaper.Shape(buffer, before, after, Kerning::On),
                                                                shaper.Shape(buffer, before, after, Kerning::Off));
            };
            for (size_t i = 0; i < columns.size(); ++i) { // pair 2i of the text is "P Ci", 2i + 1 "Ci P"
                const Column& column = columns[i];
                const hb_codepoint_t second = characters[column.character];
                if (column.after)
                    if (const int8_t value = valueOf(2 * i, character, second))
                        for (uint32_t stood : column.stands)
                            entries.push_back({first, stood, value});
                if (column.before)
                    if (const int8_t value = valueOf(2 * i + 1, second, character))
                        for (uint32_t stood : column.stands)
                            entries.push_back({stood, first, value});
            }
        }
    }

    // Whether a crowd's first member, `member`, stands for the crowd in its pairs with the
    // distinct `character`: both of the pair's scripts are KernsByGlyph, and `character` is
    // ShapedByItsGlyph.
    static bool StandsForCrowd(hb_codepoint_t character, hb_codepoint_t member)
    {
        return ShapedByItsGlyph(character) && KernsByGlyph(PairScript(character, member)) &&
               KernsByGlyph(PairScript(member, character));
    }

    static bool SameScriptBothWays(hb_codepoint_t first, hb_codepoint_t second)
    {
        return PairScript(first, second) == PairScript(second, first);
    }

    PairShaper shaper;
    std::vector<hb_codepoint_t> characters;
    size_t count;
    std::vector<uint32_t> distinct;            // in list order
    std::vector<std::vector<uint32_t>> crowds; // each in list order
};

} // namespace

GposKerning::GposKerning(const HarfBuzzFace& face, unsigned ppem, const ExportCharacters& listed)
    : table([&] {
          CharCodeList codes;
          for (const ExportCharacter& character : listed)
              codes.push_back(character.code);
          return codes;
      }())
{
    std::vector<hb_codepoint_t> characters;
    for (const ExportCharacter& character : listed)
        characters.push_back(character.character);
    table.Add(PairTable(face, ppem, std::move(characters)).Compute());
}

std::vector<KerningPair> GposKerning::PairsOf(uint32_t code)
{
    return table.PairsOf(code);
}
