// The pixel codings at their edges: glyphs of one pixel, full glyphs, ink on the first row
// and column only, and the widths where the model coding hands over to columns and then to
// the run codings; each drawn by the runtime in four rotations at every bpp. And the
// writer's choices between two forms: the smaller one is taken.
#include "export/packed/packed_font.h"
#include "export/packed/pixel_model.h"
#include "runtime/runtime_font.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Canvas = std::map<std::pair<int, int>, int>;

void Plot(void* ctx, int x, int y, uint8_t coverage)
{
    auto [at, added] = static_cast<Canvas*>(ctx)->emplace(std::pair(x, y), coverage);
    if (!added)
        at->second = -1;
}

// A glyph whose values `value(column, row)` gives; the corners inked, so that the box
// stays the whole glyph.
template <typename Value>
PackGlyph Shape(uint32_t code, unsigned width, unsigned rows, Value&& value)
{
    PackGlyph glyph;
    glyph.code = code;
    glyph.width = width;
    glyph.rows = rows;
    for (unsigned row = 0; row < rows; ++row)
        for (unsigned column = 0; column < width; ++column)
            glyph.coverage.push_back(static_cast<uint8_t>(value(column, row)));
    glyph.left = static_cast<int>(code % 3) - 1;
    glyph.top = static_cast<int>(rows) - 2;
    glyph.advance = static_cast<int>(width) + 1;
    return glyph;
}

// Strokes across and down a box, their edges half covered: what the model is fitted to.
PackGlyph Strokes(uint32_t code, unsigned size, std::mt19937& random)
{
    std::vector<uint8_t> box(size * size, 0);
    for (int stroke = 0; stroke < 4; ++stroke) {
        const bool across = random() % 2;
        const unsigned at = random() % size, from = random() % size, to = from + random() % (size - from);
        for (unsigned i = from; i <= to; ++i) {
            const unsigned cell = across ? at * size + i : i * size + at;
            box[cell] = 255;
            const unsigned edge = across ? (at + 1 < size ? cell + size : cell) : (at + 1 < size ? cell + 1 : cell);
            box[edge] = std::max<uint8_t>(box[edge], static_cast<uint8_t>(60 + random() % 140));
        }
    }
    box.front() = box.back() = box[size - 1] = box[size * (size - 1)] = 200;
    return Shape(code, size, size, [&](unsigned column, unsigned row) { return box[row * size + column]; });
}

struct Edge
{
    const char* name;
    PackGlyph glyph;
    unsigned modelCoding; // its coding when the model codes every glyph it can
};

std::vector<Edge> Edges()
{
    std::mt19937 random(7);
    auto noise = [&](unsigned, unsigned) {
        return random() % 3 ? random() % 256 : 0;
    };
    auto corners = [&](unsigned width, unsigned rows) {
        return [=, &random](unsigned column, unsigned row) {
            return (column == 0 || column == width - 1) && (row == 0 || row == rows - 1) ? 255 : random() % 256;
        };
    };
    return {
        {"one pixel", Shape(1, 1, 1, [](unsigned, unsigned) { return 255; }), packed::kModel},
        {"one pixel between", Shape(2, 1, 1, [](unsigned, unsigned) { return 140; }), packed::kModel},
        {"full", Shape(3, 12, 9, [](unsigned, unsigned) { return 255; }), packed::kModel},
        {"first row and column", Shape(4, 10, 8, [](unsigned column, unsigned row) { return column && row ? 0 : 255; }),
         packed::kModel},
        {"last row and column",
         Shape(5, 10, 8, [](unsigned column, unsigned row) { return column < 9 && row < 7 ? 0 : 160; }),
         packed::kModel},
        {"noise", Shape(6, 13, 11, noise), packed::kModel},
        {"one column", Shape(7, 1, 40, corners(1, 40)), packed::kModel},
        {"widest rows", Shape(8, kMaxModelLine, 6, corners(kMaxModelLine, 6)), packed::kModel},
        {"columns", Shape(9, kMaxModelLine + 1, kMaxModelLine, corners(kMaxModelLine + 1, kMaxModelLine)),
         packed::kModel | packed::kColumns},
        {"too wide and too tall",
         Shape(10, kMaxModelLine + 1, kMaxModelLine + 1, corners(kMaxModelLine + 1, kMaxModelLine + 1)), 0},
    };
}

// Where the header says rotation `rotation` plots the value at (column, row) of `glyph`
// with the pen at (x, y).
std::pair<int, int> Turned(const PackGlyph& glyph, unsigned column, unsigned row, int rotation, int x, int y)
{
    const int dx = glyph.left + static_cast<int>(column), dy = static_cast<int>(row) - glyph.top;
    switch (rotation) {
    case 90:
        return {x + dy, y - dx - 1};
    case 180:
        return {x - dx - 1, y - dy - 1};
    case 270:
        return {x - dy - 1, y + dx};
    }
    return {x + dx, y + dy};
}

Canvas Expected(const PackGlyph& glyph, unsigned bpp, int rotation)
{
    Canvas canvas;
    const unsigned scale = 255 / ((1u << bpp) - 1);
    for (unsigned row = 0; row < glyph.rows; ++row)
        for (unsigned column = 0; column < glyph.width; ++column)
            if (const unsigned q = QuantizeCoverage(glyph.coverage[row * glyph.width + column], bpp))
                canvas[Turned(glyph, column, row, rotation, 30, 40)] = static_cast<int>(q * scale);
    return canvas;
}

// Field `field` of glyph `index`'s record.
unsigned RecordField(const PackedFont& font, size_t index, unsigned field)
{
    uint64_t at = index * font.recordBits;
    for (unsigned f = 0; f < field; ++f)
        at += font.fieldBits[f];
    unsigned value = 0;
    for (unsigned bit = 0; bit < font.fieldBits[field]; ++bit, ++at)
        value = value << 1 | ((font.records[at / 8] >> (7 - at % 8)) & 1u);
    return value + static_cast<unsigned>(font.fieldMin[field]);
}

PackedFont Pack(const std::vector<PackGlyph>& glyphs, unsigned bpp, PixelCompression compress)
{
    PackOptions options;
    options.bpp = bpp;
    options.compress = compress;
    return PackFont(glyphs, {}, {20, 16, -4}, options);
}

TEST(PixelCoding, EveryEdgeDrawsAsStoredInEveryCodingRotationAndBpp)
{
    const std::vector<Edge> edges = Edges();
    std::vector<PackGlyph> glyphs;
    for (const Edge& edge : edges)
        glyphs.push_back(edge.glyph);
    std::mt19937 random(11);
    for (uint32_t code = 100; code < 160; ++code)
        glyphs.push_back(Strokes(code, 8 + code % 9, random));
    for (unsigned bpp : {1u, 2u, 4u, 8u}) {
        for (PixelCompression compress :
             {PixelCompression::None, PixelCompression::Runs, PixelCompression::Auto, PixelCompression::Model}) {
            const PackedFont packed = Pack(glyphs, bpp, compress);
            const vt_font_t font = RuntimeFont(packed);
            for (size_t i = 0; i < glyphs.size(); ++i) {
                const std::string name = i < edges.size() ? edges[i].name : "strokes " + std::to_string(i);
                const unsigned coding = RecordField(packed, i, packed::kCoding);
                if (compress == PixelCompression::Model && i < edges.size()) {
                    EXPECT_EQ(coding, edges[i].modelCoding) << name << ", " << bpp << " bpp";
                }
                if (compress != PixelCompression::Auto && compress != PixelCompression::Model) {
                    EXPECT_FALSE(coding & packed::kModel) << name;
                }
                for (int rotation : {0, 90, 180, 270}) {
                    Canvas drawn;
                    vt_draw_char(&font, glyphs[i].code, 30, 40, rotation, Plot, &drawn);
                    ASSERT_EQ(drawn, Expected(glyphs[i], bpp, rotation))
                        << name << ", " << bpp << " bpp, rotation " << rotation << ", compression "
                        << static_cast<int>(compress) << ", coding " << coding;
                }
            }
        }
    }
}

size_t FlashBytes(const PackedFont& font)
{
    return font.records.size() + font.pixels.size() + font.model.size();
}

// auto takes the model only where it makes the font smaller than the run codings do, its
// tables counted: not for a few dots, and for a few hundred glyphs of strokes.
TEST(PixelCoding, TheModelIsTakenWhereItsTablesRepay)
{
    std::mt19937 random(3);
    std::vector<PackGlyph> few, many;
    for (uint32_t code = 0; code < 3; ++code)
        few.push_back(Shape(code, 1, 1, [](unsigned, unsigned) { return 255; }));
    for (uint32_t code = 0; code < 400; ++code)
        many.push_back(Strokes(code, 16, random));
    for (unsigned bpp : {1u, 2u, 4u, 8u}) {
        const PackedFont fewAuto = Pack(few, bpp, PixelCompression::Auto),
                         fewRuns = Pack(few, bpp, PixelCompression::Runs);
        EXPECT_TRUE(fewAuto.model.empty()) << bpp << " bpp";
        EXPECT_EQ(fewAuto.pixels, fewRuns.pixels) << bpp << " bpp";
        const PackedFont manyAuto = Pack(many, bpp, PixelCompression::Auto);
        const PackedFont manyModel = Pack(many, bpp, PixelCompression::Model);
        const PackedFont manyRuns = Pack(many, bpp, PixelCompression::Runs);
        EXPECT_FALSE(manyAuto.model.empty()) << bpp << " bpp";
        EXPECT_LT(FlashBytes(manyAuto), FlashBytes(manyRuns)) << bpp << " bpp";
        EXPECT_LE(FlashBytes(manyAuto), FlashBytes(manyModel)) << bpp << " bpp";
        EXPECT_LE(FlashBytes(manyRuns), FlashBytes(Pack(many, bpp, PixelCompression::None))) << bpp << " bpp";
    }
}

// Kerning as sorted pairs or as a table of classes, whichever is smaller: a few scattered
// pairs, and every left of a run of glyphs with every right, in two classes each side.
TEST(PackedKerningForm, TheSmallerFormIsStored)
{
    std::vector<PackGlyph> glyphs;
    for (uint32_t code = 0; code < 60; ++code)
        glyphs.push_back(Shape(code, 1, 1, [](unsigned, unsigned) { return 255; }));
    std::vector<PackKerning> scattered = {{1, 2, -1}, {30, 7, 2}, {59, 0, -3}}, grid;
    for (uint32_t left = 0; left < 20; ++left)
        for (uint32_t right = 20; right < 40; ++right)
            grid.push_back({left, right, static_cast<int8_t>(left % 2 + right % 2 - 1 ? -2 : 1)});
    const PackedFont pairs = PackFont(glyphs, scattered, {20, 16, -4}, {});
    const PackedFont classes = PackFont(glyphs, grid, {20, 16, -4}, {});
    EXPECT_EQ(pairs.kerningForm, packed::KerningForm::Pairs);
    EXPECT_EQ(classes.kerningForm, packed::KerningForm::Classes);
    // A pair holds two glyph indexes and a delta; all of them, rounded up to bytes.
    const size_t pairBits = 2 * pairs.glyphBits + pairs.kerningDeltaBits;
    EXPECT_EQ(pairs.kerning.size(), (scattered.size() * pairBits + 7) / 8);
    EXPECT_LT(classes.kerning.size(), (grid.size() * (2 * classes.glyphBits + classes.kerningDeltaBits) + 7) / 8);
}

} // namespace
