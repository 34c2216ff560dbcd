// Every glyph a packed font stores, drawn by the runtime in the four rotations, against
// the ds export of the same font: its turned pixel arrays quantized, each placed by its
// corner; kerned texts against the ds kerning tables.
#include "export/kerning/kerning_source.h"
#include "export/packed/packed_render.h"
#include "export/ds/pixel_arrays.h"
#include "runtime/runtime_font.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace {

using Canvas = std::map<std::pair<int, int>, int>; // (x, y) -> coverage; plotted twice: -1

void Plot(void* ctx, int x, int y, uint8_t coverage)
{
    auto [at, added] = static_cast<Canvas*>(ctx)->emplace(std::pair(x, y), coverage);
    if (!added)
        at->second = -1;
}

// What the ds export holds of one character.
struct DsCharacter
{
    FTGlyph glyph; // its bitmap gone with the next render
    int w = 0, h = 0;
    TurnedImages turned; // empty without pixels
    std::vector<KerningPair> kerning;
};

// The turned array of `rotation` (index of kRotations) quantized to `bpp` and drawn
// upright with its top left corner where that rotation puts it for the pen at (x, y).
Canvas DsDrawing(const DsCharacter& c, size_t rotation, unsigned bpp, int x, int y)
{
    const int w = c.w, h = c.h;
    const int xoff = c.glyph.left, yoff = c.glyph.top;
    const std::pair<int, int> corners[] = {
        {x + xoff, y - yoff}, {x - yoff, y - xoff - w}, {x - xoff - w, y + yoff - h}, {x + yoff - h, y + xoff}};
    Canvas canvas;
    const TurnedImage& image = c.turned[rotation];
    const unsigned max = (1u << bpp) - 1;
    for (unsigned row = 0; row < image.height; ++row)
        for (unsigned column = 0; column < image.width; ++column) {
            const unsigned q = (image.pixels[row * image.width + column] * max + 127) / 255;
            if (q != 0)
                canvas[{corners[rotation].first + static_cast<int>(column),
                        corners[rotation].second + static_cast<int>(row)}] = static_cast<int>(q * 255 / max);
        }
    return canvas;
}

struct Case
{
    const char* name;
    std::string font;
    unsigned height;
    uint32_t first, last;
    RenderOptions render;
};

class PackedDrawing : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override
    {
        const Case& c = GetParam();
        font.LoadFace(c.font.c_str());
        font.SetPixelSize(c.height);
        characters = ListExportCharacters(CodeRange(c.first, c.last), nullptr);
        options.render = c.render;
        options.format = FontFormat::Packed;
        const std::vector<FTFont*> fonts = {&font};
        const KerningByFont kerning(fonts, characters, options);
        for (const ExportCharacter& listed : characters) {
            DsCharacter& ds = this->ds[listed.code];
            font.RenderGlyph(listed.character, ds.glyph, options.render);
            ds.w = static_cast<int>(ds.glyph.bitmap->width);
            ds.h = static_cast<int>(ds.glyph.bitmap->rows);
            if (ds.glyph.bitmap->buffer != nullptr)
                TurnGlyph(*ds.glyph.bitmap, ds.turned);
            ds.kerning = kerning.PairsOf(listed);
        }
    }

    PackedFont Pack(unsigned bpp, bool compress)
    {
        options.packed = {bpp, compress};
        return RenderPackedFont({&font}, characters, options);
    }

    FTFont font;
    ExportCharacters characters;
    ExportOptions options;
    std::map<uint32_t, DsCharacter> ds;
};

TEST_P(PackedDrawing, EveryGlyphInEveryRotationAndBppIsTheDsArrayQuantized)
{
    for (unsigned bpp : {1u, 2u, 4u, 8u})
        for (bool compress : {false, true}) {
            const PackedFont packed = Pack(bpp, compress);
            const vt_font_t runtime = RuntimeFont(packed);
            for (const auto& [code, character] : ds)
                for (size_t r = 0; r < kRotations.size(); ++r) {
                    Canvas drawn;
                    const int advance = vt_draw_char(&runtime, static_cast<uint8_t>(code), 40, 50,
                                                     static_cast<int>(kRotations[r]), Plot, &drawn);
                    ASSERT_EQ(drawn, DsDrawing(character, r, bpp, 40, 50))
                        << "code " << code << ", rotation " << kRotations[r] << ", " << bpp << " bpp"
                        << (compress ? ", compressed" : "");
                    ASSERT_EQ(advance, character.glyph.advanceX) << "code " << code;
                }
        }
}

TEST_P(PackedDrawing, KernedTextsAdvanceAsTheDsTablesSay)
{
    const PackedFont packed = Pack(4, true);
    const vt_font_t runtime = RuntimeFont(packed);
    const FontRecordMetrics metrics = ToRecordMetrics(CurrentLineMetrics(font.Face()));
    EXPECT_EQ(vt_font_height(&runtime), static_cast<int>(metrics.height));
    EXPECT_EQ(vt_font_ascender(&runtime), metrics.ascender);
    EXPECT_EQ(vt_font_descender(&runtime), metrics.descender);
    // Every pair, a code the font lacks (1) between them skipped.
    for (const auto& [left, l] : ds)
        for (const auto& [right, r] : ds) {
            int kerning = 0;
            for (const KerningPair& pair : r.kerning)
                if (pair.prev == left)
                    kerning = pair.delta;
            const char text[] = {static_cast<char>(left), '\1', static_cast<char>(right), 0};
            ASSERT_EQ(vt_text_width(&runtime, text), l.glyph.advanceX + kerning + r.glyph.advanceX)
                << "codes " << left << " and " << right;
        }
}

TEST_P(PackedDrawing, ATextIsItsCharactersDrawnAlongTheTurnedBaseline)
{
    const PackedFont packed = Pack(2, true);
    const vt_font_t runtime = RuntimeFont(packed);
    std::string text;
    for (const auto& [code, character] : ds)
        text += static_cast<char>(code);
    text = text.substr(text.size() > 12 ? text.size() - 12 : 0);
    const int steps[][2] = {{1, 0}, {0, -1}, {-1, 0}, {0, 1}};
    for (size_t r = 0; r < kRotations.size(); ++r) {
        Canvas drawn, expected;
        const int rotation = static_cast<int>(kRotations[r]);
        const int advance = vt_draw_text(&runtime, text.c_str(), 300, 300, rotation, Plot, &drawn);
        int pen = 0;
        for (size_t i = 0; i < text.size(); ++i) {
            if (i > 0)
                pen += vt_text_width(&runtime, text.substr(i - 1, 2).c_str()) -
                       vt_text_width(&runtime, text.substr(i - 1, 1).c_str()) -
                       vt_text_width(&runtime, text.substr(i, 1).c_str());
            vt_draw_char(&runtime, static_cast<uint8_t>(text[i]), 300 + steps[r][0] * pen, 300 + steps[r][1] * pen,
                         rotation, Plot, &expected);
            pen += vt_text_width(&runtime, text.substr(i, 1).c_str());
        }
        EXPECT_EQ(drawn, expected) << "rotation " << rotation;
        EXPECT_EQ(advance, pen);
    }
    Canvas none;
    EXPECT_EQ(vt_draw_text(&runtime, text.c_str(), 0, 0, 45, Plot, &none), 0);
    EXPECT_EQ(vt_draw_char(&runtime, static_cast<uint8_t>(text[0]), 0, 0, -90, Plot, &none), 0);
    EXPECT_EQ(vt_draw_char(&runtime, 1, 0, 0, 0, Plot, &none), 0);
    EXPECT_TRUE(none.empty());
}

RenderOptions Mono()
{
    RenderOptions render;
    render.mono = true;
    return render;
}

INSTANTIATE_TEST_SUITE_P(Fonts, PackedDrawing,
                         testing::Values(Case{"TestFont", kTestFont, 16, 32, 126, {}},
                                         Case{"LegacyKern", kLegacyKernTestFont, 11, 32, 126, {}},
                                         Case{"DejaVu", kDejaVuSans, 16, 32, 255, {}},
                                         Case{"DejaVuMono", kDejaVuSans, 12, 32, 126, Mono()},
                                         Case{"TerminusBitmap", kTerminus, 16, 32, 126, {}}),
                         [](const testing::TestParamInfo<Case>& info) { return info.param.name; });

} // namespace

namespace {

// Checks every plot against the glyph's own values and counts them.
struct Expected
{
    const PackGlyph* glyph;
    int plotted = 0;
    bool same = true;
};

void PlotExpected(void* ctx, int x, int y, uint8_t coverage)
{
    Expected& e = *static_cast<Expected*>(ctx);
    const int column = x - e.glyph->left, row = y + e.glyph->top;
    e.same = e.same && column >= 0 && row >= 0 && column < static_cast<int>(e.glyph->width) &&
             row < static_cast<int>(e.glyph->rows) && e.glyph->coverage[row * e.glyph->width + column] == coverage;
    ++e.plotted;
}

// Forty glyphs of 256 by 256 values take over 2^24 bits, more than a record's field holds:
// each glyph then starts at a multiple of 2^shift bits, and the runtime still finds it.
TEST(PackedFont, PixelsPastTwoToThe24BitsAreFoundByAlignedStarts)
{
    std::vector<PackGlyph> glyphs;
    for (uint8_t code = 40; code < 80; ++code) {
        PackGlyph glyph;
        glyph.code = code;
        glyph.width = glyph.rows = 256;
        for (unsigned i = 0; i < 256 * 256; ++i)
            glyph.coverage.push_back(static_cast<uint8_t>((i * 7 + code) % 251 + 1));
        glyph.left = code % 3;
        glyph.top = 200;
        glyph.advance = 260;
        glyphs.push_back(std::move(glyph));
    }
    const PackedFont packed = PackFont(glyphs, {}, {300, 240, -60}, {8, false});
    ASSERT_GT(packed.pixelShift, 0u);
    const vt_font_t runtime = RuntimeFont(packed);
    for (const PackGlyph& glyph : glyphs) {
        Expected expected{&glyph};
        EXPECT_EQ(vt_draw_char(&runtime, glyph.code, 0, 0, 0, PlotExpected, &expected), 260);
        EXPECT_TRUE(expected.same && expected.plotted == 256 * 256) << "code " << int(glyph.code);
    }
}

} // namespace
