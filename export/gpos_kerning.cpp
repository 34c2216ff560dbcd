#include "export/gpos_kerning.h"

#include "export/font_source.h"
#include "export/pair_shaper.h"
#include "export/thread_on_another_core.h"

#include <algorithm>
#include <atomic>
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
// Shaping each pair twice is the definition. Promises HarfBuzz documents for its glyph
// flags let most pairs go with less, for the same result:
// - Safe to concatenate. A character shaped before a neighbour, with the place between them
//   not marked unsafe to concatenate, keeps its glyph and position whatever follows it;
//   likewise one shaped after a neighbour. Two such pieces of text put together shape as
//   they did apart, so a pair of them needs no shaping of its own. (A character that some
//   lookup tries to join with what follows it never is one: in a kerned font, most letters.)
// - Safe to break. Cutting a shaped text where HarfBuzz has not marked it unsafe to break,
//   and shaping the pieces alone, gives the same glyphs and positions. So the pairs of such
//   a character P are shaped with kerning on as one text, "P C1 P C2 ...": a pair with safe
//   places on both sides is cut out as its own piece, or as P and C each alone when the
//   place between them is safe too; then nothing joined them, and shaped alone the pair is
//   the two side by side. (Whatever joins P and C, or the text around to either of them, is
//   marked across the place it crosses.) Other pairs are shaped alone.
// - Kerning off runs the same substitutions and a subset of the positioning lookups on the
//   same glyphs, and positioning lookups choose where to apply by glyphs alone, never by
//   positions; so whatever joins the two glyphs with kerning off joins them with it on as
//   well. A pair whose glyphs nothing joins with kerning on shapes with kerning off as the
//   two characters shaped alone with it off.
// All of it only for scripts of HarfBuzz's default shaper, which looks at no text around
// the buffer, and faces without Apple layout tables; everything else is shaped both ways.
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
        // Rows go to whichever thread asks next: a thread the system starts late, or
        // shares a core with another, simply takes fewer.
        const unsigned threads = std::clamp<unsigned>(std::thread::hardware_concurrency(), 1, 8);
        std::vector<std::thread> workers;
        try {
            while (workers.size() + 1 < threads)
                workers.push_back(StartOnAnotherCore([this] { ComputeRows(); }));
        } catch (const std::system_error&) {
            // No more threads: those running take all rows.
        }
        ComputeRows();
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

    struct Scratch
    {
        hb_buffer_t* row = hb_buffer_create();
        hb_buffer_t* pair = hb_buffer_create();
        std::vector<hb_codepoint_t> text;
        std::vector<size_t> columns;
        std::vector<int> clusterStart;
        ~Scratch()
        {
            hb_buffer_destroy(row);
            hb_buffer_destroy(pair);
        }
    };

    void ComputeRows()
    {
        Scratch scratch;
        for (size_t p; (p = nextRow++) < characters.size();)
            if (hasGlyph[p])
                ComputeRow(scratch, p);
    }

    void ComputeRow(Scratch& scratch, size_t first)
    {
        for (const Singles& s : singles) {
            scratch.columns.clear();
            for (size_t second = 0; second < characters.size(); ++second) {
                if (!hasGlyph[second] || PairScript(scripts[first], scripts[second]) != s.script)
                    continue;
                if (s.shortcuts && !s.aloneKernOff.empty() && !FromNeighbours(s, first, second))
                    scratch.columns.push_back(second);
                else
                    Store(first, second, Value(scratch.pair, first, second));
            }
            if (!scratch.columns.empty())
                ComputeInOneText(scratch, s, first);
        }
    }

    // Shapes the pairs of `first` with the characters of scratch.columns as one text.
    void ComputeInOneText(Scratch& scratch, const Singles& s, size_t first)
    {
        std::vector<hb_codepoint_t>& text = scratch.text;
        text.clear();
        for (size_t second : scratch.columns) {
            text.push_back(characters[first]);
            text.push_back(characters[second]);
        }
        if (!shaper.ShapeText(scratch.row, text.data(), text.size(), s.script, true)) {
            for (size_t second : scratch.columns)
                Store(first, second, Value(scratch.pair, first, second));
            return;
        }
        unsigned count = 0;
        const hb_glyph_info_t* info = hb_buffer_get_glyph_infos(scratch.row, &count);
        const hb_glyph_position_t* position = hb_buffer_get_glyph_positions(scratch.row, &count);
        // The first glyph of each character that starts a cluster; clusters are the
        // characters' places, in order.
        std::vector<int>& start = scratch.clusterStart;
        start.assign(text.size() + 1, -1);
        for (unsigned g = count; g-- > 0;)
            start[info[g].cluster] = static_cast<int>(g);
        start[text.size()] = static_cast<int>(count);
        auto safe = [&](size_t place) { // before character `place`, or at the end
            return start[place] >= 0 && (place == 0 || place == text.size() ||
                                         !(hb_glyph_info_get_glyph_flags(&info[start[place]]) & HB_GLYPH_FLAG_UNSAFE_TO_BREAK));
        };
        for (size_t i = 0; i < scratch.columns.size(); ++i) {
            const size_t second = scratch.columns[i], p = 2 * i, c = p + 1, next = p + 2;
            if (!safe(p) || !safe(next)) {
                Store(first, second, Value(scratch.pair, first, second));
                continue;
            }
            const int g = start[p];
            if (start[next] - g != 2)
                continue; // the pair does not give two glyphs
            const hb_position_t kernOn = position[g].x_advance + position[g + 1].x_offset - position[g].x_offset;
            const ShapedText &alone = s.aloneKernOff[first], &secondAlone = s.aloneKernOff[second];
            if (start[c] == g + 1 && safe(c) && alone.glyphs == 1 && secondAlone.glyphs == 1) {
                Store(first, second, WholePixels(kernOn, alone.advance[0] + secondAlone.offset[0] - alone.offset[0]));
            } else {
                const hb_codepoint_t pair[2] = {characters[first], characters[second]};
                const ShapedText kernOff = shaper.Shape(scratch.pair, pair, 2, s.script, false);
                if (kernOff.glyphs == 2)
                    Store(first, second, WholePixels(kernOn, kernOff.Distance()));
            }
        }
    }

    void Store(size_t first, size_t second, int8_t value)
    {
        if (value != 0)
            values[first * characters.size() + second] = value;
    }

    // Whether the pieces beside a neighbour give both shapings of the pair.
    static bool FromNeighbours(const Singles& s, size_t first, size_t second)
    {
        for (bool kern : {false, true})
            if (!s.beforeNeighbour[kern][first].safeToConcat || !s.afterNeighbour[kern][second].safeToConcat)
                return false;
        return true;
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
    std::atomic<size_t> nextRow = 0;
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
