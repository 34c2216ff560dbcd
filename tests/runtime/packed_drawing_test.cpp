// Every glyph a packed font stores, drawn by the runtime in the four rotations, against
// FreeType's render turned as the ds export turns it, quantized, each placed by its
// corner; kerned texts against the kerning source's pairs.
#include "charset/char_range_parser.h"
#include "charset/unicode_text.h"
#include "export/ds/pixel_arrays.h"
#include "export/kerning/kerning_source.h"
#include "export/packed/packed_render.h"
#include "runtime/runtime_font.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
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
    long face;
    unsigned height;
    std::string chars;
    RenderOptions render;
    std::string fallback = {};      // face 2 of it gives the characters the main font lacks
    const char* codepage = nullptr; // keyed by its bytes; else by code point
    KerningMode kerning = KerningMode::Legacy;
};

// A code as a text holds it: UTF-8 in a Unicode font, else the byte.
std::string TextOf(uint32_t code, const vt_font_t& font)
{
    return font.keys == VT_KEYS_UNICODE ? EncodeUtf8(code) : std::string(1, static_cast<char>(code));
}

class PackedDrawing : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override
    {
        const Case& c = GetParam();
        fonts.push_back(std::make_unique<FTFont>());
        fonts[0]->LoadFace(c.font.c_str(), c.face);
        if (!c.fallback.empty()) {
            fonts.push_back(std::make_unique<FTFont>());
            fonts[1]->LoadFace(c.fallback.c_str(), 2);
        }
        for (const auto& font : fonts)
            font->SetPixelSize(c.height);
        std::string error;
        if (c.codepage)
            codepage = Codepage::Open(c.codepage, error);
        characters = ListExportCharacters(ParseCharCodeText(c.chars), codepage ? &*codepage : nullptr);
        for (ExportCharacter& listed : characters)
            listed.font = fonts.size() > 1 && fonts[0]->GlyphIndex(listed.character) == 0;
        options.render = c.render;
        options.kerning = c.kerning;
        options.format = FontFormat::Packed;
        options.codepage = codepage ? &*codepage : nullptr;
        const KerningByFont kerning(Fonts(), characters, options);
        for (const ExportCharacter& listed : characters) {
            DsCharacter& ds = this->ds[listed.code];
            fonts[listed.font]->RenderGlyph(listed.character, ds.glyph, options.render);
            ds.w = static_cast<int>(ds.glyph.bitmap->width);
            ds.h = static_cast<int>(ds.glyph.bitmap->rows);
            if (ds.glyph.bitmap->buffer != nullptr)
                TurnGlyph(*ds.glyph.bitmap, ds.turned);
            ds.kerning = kerning.PairsOf(listed);
        }
    }

    std::vector<FTFont*> Fonts() const
    {
        std::vector<FTFont*> pointers;
        for (const auto& font : fonts)
            pointers.push_back(font.get());
        return pointers;
    }

    PackedFont Pack(unsigned bpp, PixelCompression compress)
    {
        options.packed = {bpp, compress, codepage ? packed::Keys::Bytes : packed::Keys::Unicode};
        return RenderPackedFont(Fonts(), characters, options);
    }

    std::vector<std::unique_ptr<FTFont>> fonts;
    std::optional<Codepage> codepage;
    ExportCharacters characters;
    ExportOptions options;
    std::map<uint32_t, DsCharacter> ds;
};

TEST_P(PackedDrawing, EveryGlyphInEveryRotationAndBppIsTheRenderQuantized)
{
    for (unsigned bpp : {1u, 2u, 4u, 8u})
        for (PixelCompression compress :
             {PixelCompression::None, PixelCompression::Runs, PixelCompression::Auto, PixelCompression::Model}) {
            const PackedFont packed = Pack(bpp, compress);
            const vt_font_t runtime = RuntimeFont(packed);
            for (const auto& [code, character] : ds)
                for (size_t r = 0; r < kRotations.size(); ++r) {
                    Canvas drawn;
                    const int advance =
                        vt_draw_char(&runtime, code, 40, 50, static_cast<int>(kRotations[r]), Plot, &drawn);
                    ASSERT_EQ(drawn, DsDrawing(character, r, bpp, 40, 50))
                        << "code " << code << ", rotation " << kRotations[r] << ", " << bpp << " bpp"
                        << ", compression " << static_cast<int>(compress);
                    ASSERT_EQ(advance, character.glyph.advanceX) << "code " << code;
                }
        }
}

TEST_P(PackedDrawing, KernedTextsAdvanceAsTheKerningSourceSays)
{
    const PackedFont packed = Pack(4, PixelCompression::Auto);
    const vt_font_t runtime = RuntimeFont(packed);
    const FontRecordMetrics metrics = ToRecordMetrics(CurrentLineMetrics(fonts[0]->Face()));
    EXPECT_EQ(vt_font_height(&runtime), static_cast<int>(metrics.height));
    EXPECT_EQ(vt_font_ascender(&runtime), metrics.ascender);
    EXPECT_EQ(vt_font_descender(&runtime), metrics.descender);
    // Every pair, something the font cannot draw between them skipped: in UTF-8 a byte that
    // starts no character, else a code the font lacks.
    const std::string skipped = runtime.keys == VT_KEYS_UNICODE ? "\xFF" : "\1";
    for (const auto& [left, l] : ds) {
        std::map<uint32_t, int> after; // right code -> kerning
        for (const auto& [right, r] : ds)
            for (const KerningPair& pair : r.kerning)
                if (pair.prev == left)
                    after[right] = pair.delta;
        for (const auto& [right, r] : ds) {
            const std::string text = TextOf(left, runtime) + skipped + TextOf(right, runtime);
            ASSERT_EQ(vt_text_width(&runtime, text.c_str()), l.glyph.advanceX + after[right] + r.glyph.advanceX)
                << "codes " << left << " and " << right;
        }
    }
}

TEST_P(PackedDrawing, ATextIsItsCharactersDrawnAlongTheTurnedBaseline)
{
    const PackedFont packed = Pack(2, PixelCompression::Auto);
    const vt_font_t runtime = RuntimeFont(packed);
    std::vector<std::string> characters;
    for (const auto& [code, character] : ds)
        characters.push_back(TextOf(code, runtime));
    characters.erase(characters.begin(), characters.end() - std::min<ptrdiff_t>(12, std::ssize(characters)));
    std::string text;
    for (const std::string& character : characters)
        text += character;
    const int steps[][2] = {{1, 0}, {0, -1}, {-1, 0}, {0, 1}};
    for (size_t r = 0; r < kRotations.size(); ++r) {
        Canvas drawn, expected;
        const int rotation = static_cast<int>(kRotations[r]);
        const int advance = vt_draw_text(&runtime, text.c_str(), 300, 300, rotation, Plot, &drawn);
        int pen = 0;
        for (size_t i = 0; i < characters.size(); ++i) {
            const int alone = vt_text_width(&runtime, characters[i].c_str());
            if (i > 0)
                pen += vt_text_width(&runtime, (characters[i - 1] + characters[i]).c_str()) -
                       vt_text_width(&runtime, characters[i - 1].c_str()) - alone;
            vt_draw_text(&runtime, characters[i].c_str(), 300 + steps[r][0] * pen, 300 + steps[r][1] * pen, rotation,
                         Plot, &expected);
            pen += alone;
        }
        EXPECT_EQ(drawn, expected) << "rotation " << rotation;
        EXPECT_EQ(advance, pen);
    }
    Canvas none;
    EXPECT_EQ(vt_draw_text(&runtime, text.c_str(), 0, 0, 45, Plot, &none), 0);
    EXPECT_EQ(vt_draw_char(&runtime, ds.begin()->first, 0, 0, -90, Plot, &none), 0);
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
                         testing::Values(Case{"TestFont", kTestFont, 0, 16, "32-126", {}},
                                         Case{"LegacyKern", kLegacyKernTestFont, 0, 11, "32-126", {}},
                                         Case{"DejaVu", kDejaVuSans, 0, 16, "32-255", {}},
                                         Case{"DejaVuCp1251", kDejaVuSans, 0, 16, "32-126,0xC0-0xFF", {}, {}, "CP1251"},
                                         Case{"DejaVuMono", kDejaVuSans, 0, 12, "32-126", Mono()},
                                         Case{"TerminusBitmap", kTerminus, 0, 16, "32-126", {}},
                                         // Japanese: Latin, kana, CJK punctuation and ideographs
                                         Case{"CjkJapanese",
                                              kNotoSansCjk,
                                              0,
                                              14,
                                              "32-126,0x3000-0x3020,0x3041-0x3096,0x30A1-0x30FA,0x4E00-0x4E3F,0x65E5,"
                                              "0x672C,0x8A9E,0xFF01-0xFF20",
                                              {},
                                              {},
                                              nullptr,
                                              KerningMode::Gpos},
                                         // Latin, Cyrillic and Greek, the Chinese from a collection's face
                                         Case{"LatinWithCjkFallback",
                                              kDejaVuSans,
                                              0,
                                              13,
                                              "32-126,0x410-0x44F,0x391-0x3C9,0x4F60,0x597D,0x4E16,0x754C,0x3002",
                                              {},
                                              kNotoSansCjk,
                                              nullptr,
                                              KerningMode::Auto},
                                         Case{"CjkMono", kNotoSansCjk, 2, 12, "32-126,0x4E00-0x4E20,0x9F8D-0x9FA5",
                                              Mono()}),
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
    for (uint32_t code = 40; code < 80; ++code) {
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
    const PackedFont packed = PackFont(glyphs, {}, {300, 240, -60}, {8, PixelCompression::None});
    ASSERT_GT(packed.pixelShift, 0u);
    const vt_font_t runtime = RuntimeFont(packed);
    for (const PackGlyph& glyph : glyphs) {
        Expected expected{&glyph};
        EXPECT_EQ(vt_draw_char(&runtime, glyph.code, 0, 0, 0, PlotExpected, &expected), 260);
        EXPECT_TRUE(expected.same && expected.plotted == 256 * 256) << "code " << int(glyph.code);
    }
}

} // namespace

namespace {

// A Unicode font's codes are characters: legacy kerning finds its Latin-1 letters' pairs,
// which the desktop's bytes, cut to a signed char, never find.
TEST(PackedKerning, AUnicodeFontKernsItsLatin1LettersAsCharacters)
{
    FTFont font;
    font.LoadFace(kDejaVuSans.c_str());
    font.SetPixelSize(40);
    ExportOptions options;
    options.format = FontFormat::Packed;
    const ExportCharacters characters = ListExportCharacters(CodeRange(32, 255), nullptr);
    const KerningByFont kerning({&font}, characters, options);
    FT_Vector expected{};
    font.GetCharKerning(0xC0, 'V', expected); // À then V
    ASSERT_NE(expected.x, 0);
    const std::vector<KerningPair> pairs = kerning.PairsOf(characters['V' - 32]);
    EXPECT_NE(std::find(pairs.begin(), pairs.end(), KerningPair{0xC0, static_cast<int8_t>(expected.x)}), pairs.end());
}

} // namespace
