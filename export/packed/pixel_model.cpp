#include "export/packed/pixel_model.h"

#include "export/packed/arithmetic_encoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr unsigned kReachMost = 4; // of a window either side of the pixel

// A pixel and what its decoder knows around it: in `inked` a bit for each neighbour that
// is not 0, bits 0 to 3 the line's four pixels before it, bits 4 to 12 and 13 to 21 the
// pixels of the line before and the one before that, from four before to four after; and
// the values of the pixel before it on its line and of the one on the line before.
struct Sample
{
    uint32_t inked = 0;
    uint8_t value = 0;
    uint8_t west = 0;
    uint8_t north = 0;
};

// The samples of a glyph's box in scan order: rows, or columns with `columns`.
std::vector<Sample> Samples(const StoredPixels& glyph, bool columns)
{
    const int length = static_cast<int>(columns ? glyph.rows : glyph.width);
    const int lines = static_cast<int>(columns ? glyph.width : glyph.rows);
    auto value = [&](int line, int at) -> unsigned {
        if (line < 0 || at < 0 || at >= length)
            return 0;
        const int row = columns ? at : line, column = columns ? line : at;
        return glyph.box[static_cast<size_t>(row) * glyph.width + column];
    };
    std::vector<Sample> samples;
    samples.reserve(glyph.box.size());
    for (int line = 0; line < lines; ++line) {
        for (int at = 0; at < length; ++at) {
            Sample sample;
            sample.value = static_cast<uint8_t>(value(line, at));
            sample.west = static_cast<uint8_t>(value(line, at - 1));
            sample.north = static_cast<uint8_t>(value(line - 1, at));
            auto add = [&](unsigned bit, int inLine, int inAt) {
                sample.inked |= uint32_t{value(inLine, inAt) != 0} << bit;
            };
            for (int j = 0; j < 4; ++j)
                add(j, line, at - 4 + j);
            for (int j = 0; j < 9; ++j) {
                add(4 + j, line - 1, at - 4 + j);
                add(13 + j, line - 2, at - 4 + j);
            }
            samples.push_back(sample);
        }
    }
    return samples;
}

unsigned WindowWidth(int reach)
{
    return reach < 0 ? 0 : 2 * reach + 1;
}

// The window `reach` either side of the middle of the nine bits at `from`.
uint32_t Around(uint32_t word, unsigned from, int reach)
{
    return reach < 0 ? 0 : (word >> (from + kReachMost - reach)) & ((1u << WindowWidth(reach)) - 1);
}

// The context the runtime forms from a neighbour word: each window's bits after the ones before.
uint32_t Context(uint32_t word, const ModelWindows& windows)
{
    const uint32_t current = (word >> (4 - windows.current)) & ((1u << windows.current) - 1);
    return (current << WindowWidth(windows.before) | Around(word, 4, windows.before))
               << WindowWidth(windows.beforeThat) |
           Around(word, 13, windows.beforeThat);
}

// What a font's model is made of besides its chances.
struct ModelShape
{
    ModelWindows windows;
    unsigned valueBits = 0; // kept of each neighbour's value for a pixel's value
    unsigned bpp = 1;

    size_t Contexts() const { return size_t{1} << windows.Bits(); }
    size_t TableSize() const { return Contexts() + (bpp == 1 ? 0 : size_t{1} << (2 * valueBits + bpp)); }
};

// Calls `decide(entry, bit)` for each decision that codes `sample`, with its entry in the
// model's array: with n contexts, c of the first table (not 0?), then, beyond 1 bit,
// n + (neighbours' values << bpp) + t for the bits of the value.
template <typename Decide>
void Decisions(const Sample& sample, const ModelShape& shape, Decide&& decide)
{
    decide(Context(sample.inked, shape.windows), sample.value != 0);
    if (sample.value == 0 || shape.bpp == 1)
        return;
    const unsigned drop = shape.bpp - shape.valueBits;
    const size_t neighbours = (size_t{sample.west} >> drop) << shape.valueBits | size_t{sample.north} >> drop;
    const size_t base = shape.Contexts() + (neighbours << shape.bpp);
    unsigned node = 1;
    for (unsigned bit = shape.bpp; bit-- > 0;) {
        const unsigned taken = (sample.value >> bit) & 1u;
        decide(base + node, taken);
        node = node * 2 + taken;
    }
}

using Counts = std::vector<std::array<uint32_t, 2>>;

// The chance / 256 of a 0 that costs the counted decisions least; 0 for certainly 1.
uint8_t Chance(const std::array<uint32_t, 2>& counts)
{
    if (counts[0] == 0)
        return counts[1] == 0 ? 128 : 0;
    const double share = 256.0 * counts[0] / (static_cast<double>(counts[0]) + counts[1]);
    return static_cast<uint8_t>(std::clamp(std::lround(share), 1L, 255L));
}

// Costs in whole units of 2^-16 bits, so that sums, and the choices made by them, come out
// the same wherever the exporter runs, its page's engine included.
using Cost = uint64_t;
constexpr Cost kBit = 1u << 16;

// What a decision costs by its outcome and chance, as ArithmeticEncoder::Cost says (an
// outcome of no chance never happens).
const std::array<std::array<Cost, 256>, 2>& CostTable()
{
    static const auto table = [] {
        std::array<std::array<Cost, 256>, 2> costs{};
        for (unsigned bit = 0; bit < 2; ++bit)
            for (unsigned zero = 0; zero < 256; ++zero)
                if (bit ? zero < 256 : zero > 0)
                    costs[bit][zero] = static_cast<Cost>(std::llround(ArithmeticEncoder::Cost(bit, zero) * kBit));
        return costs;
    }();
    return table;
}

// The counted decisions with chances fitted to them, the chances' entries from `first` to
// `last` only.
Cost FittedCost(const Counts& counts, size_t first, size_t last)
{
    const auto& cost = CostTable();
    Cost bits = 0;
    for (size_t entry = first; entry < last; ++entry) {
        const uint8_t chance = Chance(counts[entry]);
        bits += counts[entry][0] * cost[0][chance] + counts[entry][1] * cost[1][chance];
    }
    return bits;
}

struct ModelGlyph
{
    size_t index; // in the font
    unsigned coding;
    std::vector<Sample> samples;
};

Counts Count(const std::vector<const ModelGlyph*>& glyphs, const ModelShape& shape)
{
    Counts counts(shape.TableSize(), {0, 0});
    for (const ModelGlyph* glyph : glyphs)
        for (const Sample& sample : glyph->samples)
            Decisions(sample, shape, [&](size_t entry, unsigned bit) { ++counts[entry][bit]; });
    return counts;
}

// The windows a model may take: from the pixel before alone to more context than a
// large font's samples fill.
std::vector<ModelWindows> WindowChoices()
{
    std::vector<ModelWindows> choices;
    for (unsigned current = 0; current <= 4; ++current)
        for (int before = -1; before <= 3; ++before)
            for (int beforeThat = -1; beforeThat <= std::min(before, 2); ++beforeThat) {
                const ModelWindows windows{current, before, beforeThat};
                if (windows.Bits() > 0 && windows.Bits() <= 14)
                    choices.push_back(windows);
            }
    return choices;
}

// The shape whose tables and the pixels of `sampled` (`share` of all) cost least: the
// windows by the first table, then the values' bits by the second.
ModelShape ChooseShape(const std::vector<const ModelGlyph*>& sampled, double share, unsigned bpp)
{
    ModelShape best{{}, 0, bpp};
    double bestBits = std::numeric_limits<double>::infinity();
    for (const ModelWindows& windows : WindowChoices()) {
        const ModelShape shape{windows, 0, bpp};
        const size_t table = shape.Contexts();
        const double bits =
            static_cast<double>(FittedCost(Count(sampled, shape), 0, table)) / share + 8.0 * kBit * table;
        if (bits < bestBits) {
            bestBits = bits;
            best.windows = windows;
        }
    }
    if (bpp == 1)
        return best;
    bestBits = std::numeric_limits<double>::infinity();
    ModelShape valuesOnly{{0, -1, -1}, 0, bpp}; // one context: the second table alone varies
    for (unsigned valueBits = 0; valueBits <= std::min(bpp, 4u); ++valueBits) {
        valuesOnly.valueBits = valueBits;
        const size_t size = valuesOnly.TableSize();
        const double bits =
            static_cast<double>(FittedCost(Count(sampled, valuesOnly), 1, size)) / share + 8.0 * kBit * (size - 1);
        if (bits < bestBits) {
            bestBits = bits;
            best.valueBits = valueBits;
        }
    }
    return best;
}

// A model fitted to the glyphs that take it.
struct Fitted
{
    std::vector<uint8_t> table;
    std::vector<bool> taking; // by candidate
};

std::vector<uint8_t> Chances(const Counts& counts)
{
    std::vector<uint8_t> table;
    table.reserve(counts.size());
    for (const auto& entry : counts)
        table.push_back(Chance(entry));
    return table;
}

// What the coder's end adds to a glyph's information, about.
constexpr Cost kFinishCost = 2 * kBit;

Cost EstimateCost(const ModelGlyph& glyph, const ModelShape& shape, const std::vector<uint8_t>& table)
{
    const auto& cost = CostTable();
    Cost bits = kFinishCost;
    for (const Sample& sample : glyph.samples)
        Decisions(sample, shape, [&](size_t entry, unsigned bit) { bits += cost[bit][table[entry]]; });
    return bits;
}

// Fits the model to the candidates, then, unless `everyGlyph`, again to those whose pixels
// it makes smaller than their own coding (`ownBits`) until they stay the same.
Fitted FitTo(const std::vector<const ModelGlyph*>& candidates, const ModelShape& shape,
             const std::vector<uint64_t>& ownBits, bool everyGlyph)
{
    Fitted fitted{{}, std::vector<bool>(candidates.size(), true)};
    for (int round = 0; round < 4; ++round) {
        std::vector<const ModelGlyph*> taking;
        for (size_t i = 0; i < candidates.size(); ++i)
            if (fitted.taking[i])
                taking.push_back(candidates[i]);
        fitted.table = Chances(Count(taking, shape));
        if (everyGlyph)
            break;
        bool changed = false;
        for (size_t i = 0; i < candidates.size(); ++i) {
            if (fitted.taking[i] &&
                EstimateCost(*candidates[i], shape, fitted.table) >= ownBits[candidates[i]->index] * kBit) {
                fitted.taking[i] = false;
                changed = true;
            }
        }
        if (!changed)
            break;
    }
    return fitted;
}

BitWriter Encode(const ModelGlyph& glyph, const ModelShape& shape, const std::vector<uint8_t>& table)
{
    ArithmeticEncoder encoder;
    for (const Sample& sample : glyph.samples)
        Decisions(sample, shape, [&](size_t entry, unsigned bit) { encoder.Encode(bit, table[entry]); });
    return encoder.Finish();
}

// The glyphs' pixels and codings as a choice of the model's would leave them.
struct Outcome
{
    std::vector<BitWriter> bits; // by candidate: empty where the glyph keeps its own
    std::vector<unsigned> codings;
    uint64_t total = 0; // pixels, tables and coding fields, in bits
};

// The bits of the coding field over `codings` of drawn glyphs (width > 0).
unsigned CodingFieldBits(const std::vector<StoredPixels>& glyphs, const std::vector<unsigned>& codings)
{
    unsigned least = ~0u, most = 0;
    for (size_t i = 0; i < glyphs.size(); ++i) {
        if (glyphs[i].width == 0)
            continue;
        least = std::min(least, codings[i]);
        most = std::max(most, codings[i]);
    }
    return least > most ? 0 : BitWriter::BitsFor(most - least);
}

Outcome Apply(const std::vector<StoredPixels>& glyphs, const std::vector<const ModelGlyph*>& candidates,
              const ModelShape& shape, const Fitted& fitted, bool everyGlyph)
{
    Outcome outcome;
    outcome.bits.resize(candidates.size());
    std::vector<uint64_t> bits;
    for (const StoredPixels& glyph : glyphs) {
        outcome.codings.push_back(glyph.coding);
        bits.push_back(glyph.bits.Size());
    }
    for (size_t i = 0; i < candidates.size(); ++i) {
        if (!fitted.taking[i])
            continue;
        const size_t index = candidates[i]->index;
        BitWriter coded = Encode(*candidates[i], shape, fitted.table);
        if (!everyGlyph && coded.Size() >= bits[index])
            continue;
        bits[index] = coded.Size();
        outcome.codings[index] = candidates[i]->coding;
        outcome.bits[i] = std::move(coded);
    }
    // The decoder may read 32 bits past the last glyph: a pad of four bytes.
    outcome.total = 8 * (fitted.table.size() + 4) + glyphs.size() * CodingFieldBits(glyphs, outcome.codings);
    for (uint64_t glyphBits : bits)
        outcome.total += glyphBits;
    return outcome;
}

// About this many samples are enough to choose a model's shape; the fit takes all.
constexpr size_t kChoosingSamples = 300000;

// Each drawn glyph whose rows, or else columns, the runtime's line memory holds.
std::vector<ModelGlyph> Candidates(const std::vector<StoredPixels>& glyphs)
{
    std::vector<ModelGlyph> candidates;
    for (size_t i = 0; i < glyphs.size(); ++i) {
        const StoredPixels& glyph = glyphs[i];
        const bool columns = glyph.width > kMaxModelLine;
        if (glyph.width > 0 && (!columns || glyph.rows <= kMaxModelLine))
            candidates.push_back({i, packed::kModel | (columns ? packed::kColumns : 0u), Samples(glyph, columns)});
    }
    return candidates;
}

// The shape chosen on every how-many-th candidate that makes about kChoosingSamples samples.
ModelShape ChooseShapeOnSome(const std::vector<const ModelGlyph*>& candidates, unsigned bpp)
{
    size_t samples = 0, sampledCount = 0;
    for (const ModelGlyph* glyph : candidates)
        samples += glyph->samples.size();
    std::vector<const ModelGlyph*> sampled;
    const size_t step = std::max<size_t>(1, samples / kChoosingSamples);
    for (size_t i = 0; i < candidates.size(); i += step) {
        sampled.push_back(candidates[i]);
        sampledCount += candidates[i]->samples.size();
    }
    return ChooseShape(sampled, static_cast<double>(sampledCount) / samples, bpp);
}

} // namespace

unsigned ModelWindows::Bits() const
{
    return current + WindowWidth(before) + WindowWidth(beforeThat);
}

void ApplyPixelModel(std::vector<StoredPixels>& glyphs, unsigned bpp, bool everyGlyph, PackedFont& font)
{
    const std::vector<ModelGlyph> candidates = Candidates(glyphs);
    if (candidates.empty())
        return;
    std::vector<const ModelGlyph*> all;
    for (const ModelGlyph& candidate : candidates)
        all.push_back(&candidate);
    const ModelShape shape = ChooseShapeOnSome(all, bpp);
    std::vector<uint64_t> ownBits;
    for (const StoredPixels& glyph : glyphs)
        ownBits.push_back(glyph.bits.Size());

    // Each glyph in whichever coding is smaller, or every one the model can take in it,
    // which may leave the coding field fewer bits; or no model at all.
    std::vector<unsigned> ownCodings;
    uint64_t ownTotal = 0;
    for (const StoredPixels& glyph : glyphs) {
        ownCodings.push_back(glyph.coding);
        ownTotal += glyph.bits.Size();
    }
    ownTotal += glyphs.size() * CodingFieldBits(glyphs, ownCodings);
    Fitted best;
    Outcome chosen;
    chosen.total = everyGlyph ? std::numeric_limits<uint64_t>::max() : ownTotal;
    for (bool takeAll : {false, true}) {
        if (everyGlyph && !takeAll)
            continue;
        Fitted fitted = FitTo(all, shape, ownBits, takeAll);
        Outcome outcome = Apply(glyphs, all, shape, fitted, takeAll);
        if (outcome.total < chosen.total) {
            chosen = std::move(outcome);
            best = std::move(fitted);
        }
    }
    if (best.table.empty())
        return;
    for (size_t i = 0; i < all.size(); ++i) {
        if (chosen.bits[i].Size() == 0)
            continue;
        StoredPixels& glyph = glyphs[all[i]->index];
        glyph.bits = std::move(chosen.bits[i]);
        glyph.coding = all[i]->coding;
    }
    const ModelWindows& windows = shape.windows;
    font.model = std::move(best.table);
    font.modelBits = windows.Bits();
    font.modelValueBits = shape.valueBits;
    font.modelWidth = {windows.current, WindowWidth(windows.before), WindowWidth(windows.beforeThat)};
    font.modelShift = {packed::kModelMargin - windows.current,
                       packed::kModelMargin - static_cast<unsigned>(std::max(windows.before, 0)),
                       packed::kModelMargin - static_cast<unsigned>(std::max(windows.beforeThat, 0))};
}
