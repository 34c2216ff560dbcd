#include "export/gpos_kerning.h"

#include "export/font_source.h"
#include "export/pair_shaper.h"

#include <algorithm>
#include <thread>

namespace {

// Scripts HarfBuzz shapes with its default shaper, which looks at no text around a buffer.
bool ShapesPlainly(hb_script_t script)
{
    return script == HB_SCRIPT_LATIN || script == HB_SCRIPT_CYRILLIC || script == HB_SCRIPT_GREEK;
}

// Stands beside a character shaped on its own to read the flags at the character's edge:
// the last code point, which fonts leave unmapped, so that lookups rarely look at it.
constexpr hb_codepoint_t kNeighbour = 0x10FFFF;

int8_t WholePixels(hb_position_t kernOn, hb_position_t kernOff)
{
    return static_cast<int8_t>(std::clamp((kernOn - kernOff + 32) >> 6, -128, 127));
}

// Works out the value of every ordered pair of the listed characters.
//
// Shaping each pair twice is the definition; two promises HarfBuzz documents for its glyph
// flags let most pairs go with less, and the result stays the same:
// - Safe to concatenate. A character shaped before a neighbour, with the place between them
//   not marked unsafe to concatenate, keeps its glyph and position whatever follows it;
//   likewise one shaped after a neighbour. Two such pieces of text put together shape as
//   they did apart, so a pair of them needs no shaping of its own. (A character that some
//   lookup tries to join with what follows it never is one: in a kerned font, most letters.)
// - Safe to break. When HarfBuzz marks the place between the two glyphs of a pair shaped
//   with kerning on safe to break, the pair shapes with kerning on as the two characters
//   shaped alone. Kerning off runs the same substitutions and a subset of the positioning
//   lookups on the same glyphs, and positioning lookups choose where to apply by glyphs
//   alone, never by positions; so whatever joins the two glyphs with kerning off joins
//   them with it on as well, the place is safe with kerning off too, and the shaping with
//   kerning off is the two characters shaped alone with it off.
// Both only for scripts of HarfBuzz's default shaper, which looks at no text around the
// buffer, and faces without Apple layout tables; everything else is shaped both ways.
class PairTable
{
public:
    PairTable(const HarfBuzzFace& face, unsigned ppem, std::vector<hb_codepoint_t> characters)
        : shaper(face.Get(), ppem), characters(std::move(characters)), shortcuts(!face.HasAppleLayout())
    {
        const size_t count = this->characters.size();
        for (hb_codepoint_t character : this->characters) {
            hasGlyph.push_back(shaper.HasGlyph(character));
            scripts.push_back(ScriptOf(character));
        }
        // Plans and single characters for every script a pair can get, before threads share them.
        hb_buffer_t* buffer = hb_buffer_create();
        for (size_t first = 0; first < count; ++first)
            for (size_t second = 0; second < count; ++second)
                if (hasGlyph[first] && hasGlyph[second])
                    Prepare(PairScript(scripts[first], scripts[second]), buffer);
        hb_buffer_destroy(buffer);
        values.assign(count * count, 0);
    }

    // values[first * count + second]
    std::vector<int8_t> Compute()
    {
        const size_t count = characters.size();
        const unsigned threads = std::clamp<unsigned>(std::thread::hardware_concurrency(), 1, 8);
        std::vector<std::thread> workers;
        unsigned started = 1; // this thread takes rows 0, threads, 2 * threads, ...
        try {
            for (; started < threads && started < count; ++started)
                workers.emplace_back([this, started, threads] { ComputeRows(started, threads); });
        } catch (const std::system_error&) {
            // No more threads: this one takes the rows of those that did not start.
        }
        ComputeRows(0, threads);
        for (unsigned rest = started; rest < threads; ++rest)
            ComputeRows(rest, threads);
        for (std::thread& worker : workers)
            worker.join();
        return std::move(values);
    }

private:
    // Every character shaped on its own in one script, with kerning off ([0]) and on ([1]).
    struct Singles
    {
        hb_script_t script;
        bool shortcuts;
        std::array<std::vector<ShapedText>, 2> beforeNeighbour; // "character neighbour"
        std::array<std::vector<ShapedText>, 2> afterNeighbour;  // "neighbour character"
        std::vector<ShapedText> aloneKernOff;                    // only with kernOnlyPositions
    };

    void Prepare(hb_script_t script, hb_buffer_t* buffer)
    {
        for (const Singles& s : singles)
            if (s.script == script)
                return;
        shaper.Prepare(script);
        Singles prepared{script, shortcuts && ShapesPlainly(script), {}, {}, {}};
        if (prepared.shortcuts) {
            const size_t count = characters.size();
            for (bool kern : {false, true}) {
                prepared.beforeNeighbour[kern].resize(count);
                prepared.afterNeighbour[kern].resize(count);
                for (size_t i = 0; i < count; ++i) {
                    if (!hasGlyph[i])
                        continue;
                    const hb_codepoint_t before[2] = {characters[i], kNeighbour};
                    const hb_codepoint_t after[2] = {kNeighbour, characters[i]};
                    prepared.beforeNeighbour[kern][i] = shaper.Shape(buffer, before, 2, script, kern, true);
                    prepared.afterNeighbour[kern][i] = shaper.Shape(buffer, after, 2, script, kern, true);
                }
            }
            if (shaper.KernOnlyPositions(script)) {
                prepared.aloneKernOff.resize(count);
                for (size_t i = 0; i < count; ++i)
                    if (hasGlyph[i])
                        prepared.aloneKernOff[i] = shaper.Shape(buffer, &characters[i], 1, script, false);
            }
        }
        singles.push_back(std::move(prepared));
    }

    const Singles& SinglesOf(hb_script_t script) const
    {
        return *std::find_if(singles.begin(), singles.end(), [script](const Singles& s) { return s.script == script; });
    }

    // The rows of the first characters first, first + step, ...
    void ComputeRows(size_t first, size_t step)
    {
        hb_buffer_t* buffer = hb_buffer_create();
        const size_t count = characters.size();
        for (size_t p = first; p < count; p += step)
            for (size_t c = 0; c < count; ++c)
                if (const int8_t value = Value(buffer, p, c))
                    values[p * count + c] = value;
        hb_buffer_destroy(buffer);
    }

    int8_t Value(hb_buffer_t* buffer, size_t first, size_t second) const
    {
        if (!hasGlyph[first] || !hasGlyph[second])
            return 0;
        const hb_script_t script = PairScript(scripts[first], scripts[second]);
        const Singles& s = SinglesOf(script);
        const hb_codepoint_t text[2] = {characters[first], characters[second]};
        hb_position_t distance[2];
        ShapedText kernOn;
        for (bool kern : {true, false}) {
            if (s.shortcuts && s.beforeNeighbour[kern][first].safeToConcat &&
                s.afterNeighbour[kern][second].safeToConcat) {
                const ShapedText &p = s.beforeNeighbour[kern][first], &c = s.afterNeighbour[kern][second];
                distance[kern] = p.advance[0] + c.offset[1] - p.offset[0];
            } else if (!kern && kernOn.safeToBreak && !s.aloneKernOff.empty() &&
                       s.aloneKernOff[first].glyphs == 1 && s.aloneKernOff[second].glyphs == 1) {
                const ShapedText &p = s.aloneKernOff[first], &c = s.aloneKernOff[second];
                distance[kern] = p.advance[0] + c.offset[0] - p.offset[0];
            } else {
                const ShapedText shaped = shaper.Shape(buffer, text, 2, script, kern);
                if (shaped.glyphs != 2)
                    return 0;
                distance[kern] = shaped.Distance();
                if (kern)
                    kernOn = shaped;
            }
        }
        return WholePixels(distance[true], distance[false]);
    }

    PairShaper shaper;
    std::vector<hb_codepoint_t> characters;
    const bool shortcuts;
    std::vector<bool> hasGlyph;
    std::vector<hb_script_t> scripts;
    std::vector<Singles> singles;
    std::vector<int8_t> values;
};

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
    values = PairTable(face, ppem, std::move(characters)).Compute();
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
