// The runtime's reading of UTF-8 texts, byte by byte against Unicode's table of well-formed
// sequences, and its lookup of glyphs at the edges of the blocks the packer makes.
#include "charset/unicode_text.h"
#include "export/packed/packed_font.h"
#include "runtime/runtime_font.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

// A glyph of one pixel at the pen, drawn by no other code.
PackGlyph Dot(uint32_t code, int advance)
{
    PackGlyph glyph;
    glyph.code = code;
    glyph.width = glyph.rows = 1;
    glyph.coverage = {255};
    glyph.top = 1;
    glyph.advance = advance;
    return glyph;
}

void Count(void* ctx, int, int, uint8_t)
{
    ++*static_cast<int*>(ctx);
}

// Each character's advance a power of two, so that a text's advance names what was drawn.
const std::vector<std::pair<uint32_t, int>> kCharacters = {
    {'A', 1},      {0xE9, 2},       {0x20AC, 4},   {0x1F600, 8},  {0x80, 16},     {0x800, 32},
    {0x10000, 64}, {0x10FFFF, 128}, {0xD7FF, 256}, {0xE000, 512}, {0xFFFF, 1024}, {'B', 2048}};
constexpr int kKernAB = -3; // between A and B

PackedFont Font(packed::Keys keys)
{
    std::vector<PackGlyph> glyphs;
    for (const auto& [code, advance] : kCharacters)
        if (keys == packed::Keys::Unicode || code < 256)
            glyphs.push_back(Dot(code, advance));
    if (keys == packed::Keys::Bytes)
        for (uint32_t byte : {0xC3, 0xA9})
            glyphs.push_back(Dot(byte, 4096));
    PackOptions options;
    options.keys = keys;
    return PackFont(glyphs, {{'A', 'B', static_cast<int8_t>(kKernAB)}}, {16, 12, -4}, options);
}

TEST(Utf8Text, EachByteThatStartsNoWellFormedSequenceIsSkippedAlone)
{
    const PackedFont packed = Font(packed::Keys::Unicode);
    const vt_font_t font = RuntimeFont(packed);
    const struct
    {
        std::string text;
        int advance; // of what is drawn, each character one plot
        int plots;
    } rows[] = {
        {"A", 1, 1},
        {"\xC3\xA9", 2, 1},                                                                  // two bytes
        {"\xE2\x82\xAC", 4, 1},                                                              // three
        {"\xF0\x9F\x98\x80", 8, 1},                                                          // four
        {"\xC2\x80\xE0\xA0\x80\xF0\x90\x80\x80", 16 + 32 + 64, 3},                           // the first of each length
        {"\xF4\x8F\xBF\xBF\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", 128 + 256 + 512 + 1024, 4}, // around the gaps
        {"\xC0\xAF\xC1\xBF", 0, 0},                 // overlong forms of two bytes
        {"\xE0\x80\xAF\xE0\x9F\xBF", 0, 0},         // of three
        {"\xF0\x80\x80\x80\xF0\x8F\xBF\xBF", 0, 0}, // of four
        {"\xED\xA0\x80\xED\xBF\xBF", 0, 0},         // surrogates
        {"\xF4\x90\x80\x80\xF5\x80\x80\x80", 0, 0}, // past U+10FFFF
        {"\xF8\x88\x80\x80\x80\xFE\xFF", 0, 0},     // bytes that start nothing
        {"\x80\xBF"
         "A",
         1, 1}, // stray continuation bytes
        {"\xC3"
         "A\xE2\x82"
         "A\xF0\x9F\x98"
         "A",
         3, 3},             // sequences cut short, then a character
        {"\xE0\xA0", 0, 0}, // cut short by the end of the text
        {"A\xF0\x9F\x98\x81"
         "B",
         1 + 2048 + kKernAB, 2}, // a character the font lacks keeps the kerning
        {"A\xFF"
         "B",
         1 + 2048 + kKernAB, 2}, // as does a skipped byte
        {"B\xFF"
         "A",
         2048 + 1, 2}, // only A then B kerns
    };
    for (const auto& row : rows) {
        // Exactly the text and its 0 byte, so that a read past them is a sanitizer's error.
        const std::vector<char> text(row.text.c_str(), row.text.c_str() + row.text.size() + 1);
        int plots = 0;
        EXPECT_EQ(vt_draw_text(&font, text.data(), 0, 20, 0, Count, &plots), row.advance)
            << testing::PrintToString(row.text);
        EXPECT_EQ(plots, row.plots) << testing::PrintToString(row.text);
        EXPECT_EQ(vt_text_width(&font, text.data()), row.advance) << testing::PrintToString(row.text);
    }
    // A code is drawn as it is, whatever UTF-8 could hold.
    EXPECT_EQ(vt_draw_char(&font, 0x10FFFF, 0, 0, 0, nullptr, nullptr), 128);
    EXPECT_EQ(vt_draw_char(&font, 0xD800, 0, 0, 0, nullptr, nullptr), 0);
    EXPECT_EQ(vt_draw_char(&font, 0xFFFFFFFF, 0, 0, 0, nullptr, nullptr), 0);
}

TEST(Utf8Text, ACodepageFontTakesEachByteAsACode)
{
    const PackedFont packed = Font(packed::Keys::Bytes);
    const vt_font_t font = RuntimeFont(packed);
    EXPECT_EQ(font.keys, VT_KEYS_BYTES);
    EXPECT_EQ(vt_text_width(&font, "\xC3\xA9"), 4096 + 4096);
    EXPECT_EQ(vt_text_width(&font, "A\xFF"
                                   "B"),
              1 + 2048 + kKernAB);
}

// Sets of codes that give runs, bitmaps of every span up to the longest, and blocks that
// meet, each with codes before and after it probed.
std::vector<std::set<uint32_t>> CodeSets()
{
    std::vector<std::set<uint32_t>> sets = {{0}, {0x10FFFF}, {1, 0x10FFFF}, {255, 256, 511, 512}};
    std::set<uint32_t> run, everyThird, edges, clusters;
    for (uint32_t code = 0x4E00; code < 0x4E00 + 600; ++code)
        run.insert(code);
    for (uint32_t code = 32; code < 32 + 3000; code += 3)
        everyThird.insert(code);
    // A bitmap spans at most 256 codes: gaps of 255, 256 and 257 around it.
    for (uint32_t code : {100u, 355u, 356u, 612u, 613u, 870u, 871u, 872u})
        edges.insert(code);
    std::mt19937 random(27);
    for (int cluster = 0; cluster < 40; ++cluster) {
        const uint32_t start = random() % 0x30000;
        for (int i = 0; i < 30; ++i)
            clusters.insert(start + random() % 300);
    }
    sets.insert(sets.end(), {run, everyThird, edges, clusters});
    std::set<uint32_t> mixed = run;
    mixed.insert(everyThird.begin(), everyThird.end());
    mixed.insert(clusters.begin(), clusters.end());
    sets.push_back(mixed);
    return sets;
}

TEST(GlyphLookup, FindsEveryCodeAndNoOtherAtTheEdgesOfItsBlocks)
{
    for (const std::set<uint32_t>& codes : CodeSets()) {
        std::vector<PackGlyph> glyphs;
        for (uint32_t code : codes)
            glyphs.push_back(Dot(code, static_cast<int>(code % 113) + 1));
        const PackedFont packed = PackFont(glyphs, {}, {16, 12, -4}, {});
        const vt_font_t font = RuntimeFont(packed);
        std::set<uint32_t> probes = {0, 1, 0x10FFFF, 0x110000, 0xFFFFFFFF};
        for (uint32_t code : codes)
            for (uint32_t near = code - 2; near != code + 3; ++near)
                probes.insert(near);
        for (uint32_t code : probes) {
            const int expected = codes.count(code) ? static_cast<int>(code % 113) + 1 : 0;
            ASSERT_EQ(vt_draw_char(&font, code, 0, 0, 0, nullptr, nullptr), expected)
                << "code " << code << " of a set of " << codes.size() << " from " << *codes.begin();
        }
    }
}

// Pairs between glyphs of a font of more than 4,096 glyphs, whose two indexes no longer make
// one key of 24 bits, and of a small one, whose do.
TEST(GlyphLookup, KerningPairsJoinAnyTwoGlyphs)
{
    for (uint32_t count : {300u, 5000u}) {
        std::vector<PackGlyph> glyphs;
        for (uint32_t i = 0; i < count; ++i)
            glyphs.push_back(Dot(0x4E00 + i, 10));
        const uint32_t first = 0x4E00, middle = 0x4E00 + count / 2, last = 0x4E00 + count - 1;
        std::vector<PackKerning> pairs = {{first, last, -2}, {last, first, 3}, {middle, middle, 1}, {last, last, -3}};
        // Entries of an odd number of bits start at every bit of a byte.
        for (uint32_t i = 1; i < 24; ++i)
            pairs.push_back({first + i, last - i, static_cast<int8_t>(i % 7 - 3)});
        const PackedFont packed = PackFont(glyphs, pairs, {16, 12, -4}, {});
        ASSERT_EQ(packed.kerningForm, packed::KerningForm::Pairs);
        const vt_font_t font = RuntimeFont(packed);
        for (const PackKerning& pair : pairs)
            EXPECT_EQ(vt_text_width(&font, (EncodeUtf8(pair.left) + EncodeUtf8(pair.right)).c_str()), 20 + pair.delta)
                << count << " glyphs, " << pair.left << " then " << pair.right;
        EXPECT_EQ(vt_text_width(&font, (EncodeUtf8(first) + EncodeUtf8(first)).c_str()), 20);
        EXPECT_EQ(vt_text_width(&font, (EncodeUtf8(middle) + EncodeUtf8(last)).c_str()), 20);
    }
}

// GB2312's level 1, 3,755 characters scattered over 20,902 codes, costs under a byte each to find.
TEST(GlyphLookup, ScatteredCodesCostUnderAByteEach)
{
    std::vector<PackGlyph> glyphs;
    std::mt19937 random(2312);
    std::set<uint32_t> codes;
    while (codes.size() < 3755)
        codes.insert(0x4E00 + random() % 20902);
    for (uint32_t code : codes)
        glyphs.push_back(Dot(code, 1));
    EXPECT_LT(PackFont(glyphs, {}, {16, 12, -4}, {}).blocks.size(), codes.size());
}

} // namespace
