#include "export/kerning/gpos_kerning.h"

#include "export/kerning/pair_shaper.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <system_error>
#include <thread>

namespace {

// A pair's value from its shapings with kerning on and off, by the definition.
int8_t ValueOf(const ShapedText& kerned, const ShapedText& unkerned)
{
    if (kerned.glyphCount != 2 || unkerned.glyphCount != 2)
        return 0;
    return static_cast<int8_t>(std::clamp((kerned.distance - unkerned.distance + 32) >> 6, -128, 127));
}

// The value of every ordered pair of the characters.
//
// Shaping each pair alone, with kerning on and off, is the definition. Instead each
// character P shapes, once with kerning on and once off, a text of its pairs both ways,
// "P C1 P C2 ... P Ck P", which takes a fraction of the time: a pair whose both ends
// HarfBuzz marks safe to break shapes there as it does alone. Only the others are shaped
// alone.
class PairTable
{
public:
    PairTable(const HarfBuzzFace& face, unsigned ppem, std::vector<hb_codepoint_t> characters)
        : shaper(face, ppem, characters), characters(std::move(characters)), count(this->characters.size()),
          values(count * count, 0)
    {
        for (hb_codepoint_t character : this->characters)
            hasGlyph.push_back(shaper.NominalGlyph(character) != 0);
    }

    // values[first * count + second]
    std::vector<int8_t> Compute()
    {
        // Rows go to whichever thread asks next, so a thread that starts late simply takes fewer.
        std::atomic<size_t> nextRow = 0;
        auto computeRows = [&] {
            const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                                    hb_buffer_destroy);
            for (size_t first; (first = nextRow++) < count;)
                ComputeRow(buffer.get(), first);
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
        return std::move(values);
    }

private:
    // Character P's texts, one per script: "P C1 P C2 ... P Ck P" holds the pairs "P Ci",
    // and "Ci P" where that gets the same script. So P's texts take the characters after
    // P, and those before it only where the two orders get two scripts. (A character
    // without a glyph kerns with none.)
    void ComputeRow(hb_buffer_t* buffer, size_t first)
    {
        if (!hasGlyph[first])
            return;
        const hb_codepoint_t character = characters[first];
        std::vector<size_t> columns;
        std::vector<hb_codepoint_t> text;
        for (hb_script_t script : shaper.Scripts()) {
            columns.clear();
            text.assign(1, character);
            for (size_t second = 0; second < count; ++second) {
                if (hasGlyph[second] && PairScript(character, characters[second]) == script &&
                    (second >= first || !SameScriptBothWays(first, second))) {
                    columns.push_back(second);
                    text.push_back(characters[second]);
                    text.push_back(character);
                }
            }
            if (columns.empty())
                continue;
            const auto kerned = shaper.ShapeNeighbours(buffer, text, script, Kerning::On);
            const auto unkerned = shaper.ShapeNeighbours(buffer, text, script, Kerning::Off);
            auto store = [&](size_t pair, size_t before, size_t after) {
                values[before * count + after] =
                    kerned[pair] && unkerned[pair]
                        ? ValueOf(*kerned[pair], *unkerned[pair])
                        : ValueOf(shaper.Shape(buffer, characters[before], characters[after], Kerning::On),
                                  shaper.Shape(buffer, characters[before], characters[after], Kerning::Off));
            };
            for (size_t i = 0; i < columns.size(); ++i) { // pair 2i of the text is "P Ci", 2i + 1 "Ci P"
                store(2 * i, first, columns[i]);
                if (SameScriptBothWays(first, columns[i]))
                    store(2 * i + 1, columns[i], first);
            }
        }
    }

    bool SameScriptBothWays(size_t first, size_t second) const
    {
        return PairScript(characters[first], characters[second]) == PairScript(characters[second], characters[first]);
    }

    PairShaper shaper;
    std::vector<hb_codepoint_t> characters;
    size_t count;
    std::vector<bool> hasGlyph;
    std::vector<int8_t> values;
};

} // namespace

GposKerning::GposKerning(const HarfBuzzFace& face, unsigned ppem, const ExportCharacters& listed)
{
    std::vector<hb_codepoint_t> characters;
    for (const ExportCharacter& character : listed) {
        indexOf[character.code] = static_cast<int>(codes.size());
        codes.push_back(character.code);
        characters.push_back(character.character);
    }
    values = PairTable(face, ppem, std::move(characters)).Compute();
}

std::vector<KerningPair> GposKerning::PairsOf(uint32_t code)
{
    std::vector<KerningPair> pairs;
    const size_t second = static_cast<size_t>(indexOf[code]);
    for (size_t first = 0; first < codes.size(); ++first) {
        if (const int8_t value = values[first * codes.size() + second])
            pairs.push_back(KerningPair{codes[first], value});
    }
    return pairs;
}
