#include "export/gpos_kerning.h"

#include "export/font_source.h"
#include "export/kerning_reach.h"
#include "export/pair_shaper.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <system_error>
#include <thread>

namespace {

// The pair's value by the definition: shaped alone with kerning on and off.
int8_t PairValue(const PairShaper& shaper, hb_buffer_t* buffer, hb_codepoint_t first, hb_codepoint_t second)
{
    if (shaper.NominalGlyph(first) == 0 || shaper.NominalGlyph(second) == 0)
        return 0;
    const hb_codepoint_t pair[2] = {first, second};
    const hb_script_t script = PairScript(first, second);
    const ShapedText kerned = shaper.Shape(buffer, pair, script, Kerning::On);
    const ShapedText unkerned = shaper.Shape(buffer, pair, script, Kerning::Off);
    if (kerned.glyphCount != 2 || unkerned.glyphCount != 2)
        return 0;
    return static_cast<int8_t>(std::clamp((kerned.distance - unkerned.distance + 32) >> 6, -128, 127));
}

// values[first * count + second] of every ordered pair of `characters`.
std::vector<int8_t> PairValues(const HarfBuzzFace& face, unsigned ppem, const std::vector<hb_codepoint_t>& characters)
{
    const PairShaper shaper(face.Get(), ppem, characters);
    const std::vector<bool> mayKern = CharactersKerningMayReach(face, shaper, characters);
    const size_t count = characters.size();
    std::vector<int8_t> values(count * count, 0);
    // Rows go to whichever thread asks next, so a thread that starts late simply takes fewer.
    std::atomic<size_t> nextRow = 0;
    auto computeRows = [&] {
        const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                                hb_buffer_destroy);
        for (size_t first; (first = nextRow++) < count;)
            for (size_t second = 0; second < count; ++second)
                if (mayKern[first] || mayKern[second])
                    values[first * count + second] =
                        PairValue(shaper, buffer.get(), characters[first], characters[second]);
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
    return values;
}

} // namespace

GposKerning::GposKerning(const HarfBuzzFace& face, unsigned ppem, const CharCodeList& codes,
                         const ExportOptions& options)
    : codes(codes)
{
    std::vector<hb_codepoint_t> characters;
    for (size_t i = 0; i < codes.size(); ++i) {
        indexOf[codes[i]] = static_cast<int>(i);
        characters.push_back(CharacterFor(codes[i], options));
    }
    values = PairValues(face, ppem, characters);
}

std::vector<KerningPair> GposKerning::PairsOf(uint32_t code)
{
    std::vector<KerningPair> pairs;
    const size_t second = static_cast<size_t>(indexOf[code]);
    for (size_t first = 0; first < codes.size(); ++first) {
        if (const int8_t value = values[first * codes.size() + second])
            pairs.push_back(KerningPair{static_cast<char>(codes[first]), value});
    }
    return pairs;
}
