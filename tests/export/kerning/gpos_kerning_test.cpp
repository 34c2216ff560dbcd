// Kerning sources against their definitions: GPOS kerning against every pair shaped alone,
// with 'kern' on and off; legacy kerning against FreeType's lookup of every pair.

#include "charset/codepage.h"
#include "export/kerning/kerning_source.h"
#include "test_support.h"

#include <hb.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

const std::string kNotoSansCjk = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc"; // face 0 JP, 2 SC
// Glyphs no lookup names that kerning still tells apart (tests/fonts/make_test_font.py).
const std::string kCrowdsFont = VELTRANE_TEST_FONT_DIR "/veltrane-test-crowds.ttf";

// Code points first to last, every `step`-th, each its own code.
struct CodeSpan
{
    uint32_t first;
    uint32_t last;
    uint32_t step = 1;
};

ExportCharacters CharactersOf(const std::vector<CodeSpan>& spans)
{
    ExportCharacters characters;
    for (const CodeSpan& span : spans)
        for (uint32_t code = span.first; code <= span.last; code += span.step)
            characters.push_back({code, code});
    return characters;
}

int PairValue(hb_font_t* font, uint32_t first, uint32_t second)
{
    hb_codepoint_t glyph = 0;
    if (!hb_font_get_nominal_glyph(font, first, &glyph) || !glyph || !hb_font_get_nominal_glyph(font, second, &glyph) ||
        !glyph)
        return 0;
    int distance[2]; // advance of the first glyph + x offset of the second - x offset of the first
    for (int kern : {0, 1}) {
        hb_feature_t features[6];
        for (int i = 0; const char* f : {"liga=0", "clig=0", "dlig=0", "calt=0", "rlig=0", kern ? "kern" : "kern=0"})
            hb_feature_from_string(f, -1, &features[i++]);
        const std::unique_ptr<hb_buffer_t, void (*)(hb_buffer_t*)> buffer(hb_buffer_create(), hb_buffer_destroy);
        const uint32_t text[2] = {first, second};
        hb_buffer_add_codepoints(buffer.get(), text, 2, 0, 2);
        hb_buffer_set_direction(buffer.get(), HB_DIRECTION_LTR);
        hb_buffer_guess_segment_properties(buffer.get()); // script: the first not Common, Inherited or Unknown
        hb_buffer_set_language(buffer.get(), HB_LANGUAGE_INVALID);
        if (hb_buffer_get_script(buffer.get()) == HB_SCRIPT_INVALID)
            hb_buffer_set_script(buffer.get(), HB_SCRIPT_LATIN);
        hb_shape(font, buffer.get(), features, 6);
        unsigned n = 0;
        const hb_glyph_position_t* p = hb_buffer_get_glyph_positions(buffer.get(), &n);
        if (n != 2)
            return 0;
        distance[kern] = p[0].x_advance + p[1].x_offset - p[0].x_offset;
    }
    return std::clamp((distance[1] - distance[0] + 32) >> 6, -128, 127);
}

// Copies of the crowds font that HarfBuzz reads in ways its glyph collection does not foresee.
struct BrokenCrowds
{
    BrokenCrowds()
    {
        FontBytes unsorted(kCrowdsFont);
        // The coverage of the solidus's lookup (the fourth) runs on into the bytes after it:
        // a coverage out of order, whose binary search still finds "plus" in it.
        const size_t gpos = unsorted.Table("GPOS");
        const size_t lookups = gpos + unsorted.U16(gpos + 8);
        const size_t lookup = lookups + unsorted.U16(lookups + 2 + 2 * 3);
        const size_t subtable = lookup + unsorted.U16(lookup + 6);
        unsorted.Put16(subtable + unsorted.U16(subtable + 2) + 2, 6);
        unsortedCoverage = unsorted.SaveAs(dir.Path() / "unsorted.ttf");
        // A 'maxp' version HarfBuzz does not take, which leaves it no glyph count.
        FontBytes noCount(kCrowdsFont);
        noCount.Put16(noCount.Table("maxp"), 2);
        noGlyphCount = noCount.SaveAs(dir.Path() / "no-count.ttf");
    }

    TempDir dir;
    std::string unsortedCoverage;
    std::string noGlyphCount;
};

TEST(GposKerning, EveryPairAsShapedAlone)
{
    const BrokenCrowds broken;
    std::string error;
    const std::optional<Codepage> cp1251 = Codepage::Open("CP1251", error);
    struct Case
    {
        std::string path;
        int face;
        int height;
        const Codepage* codepage; // with codes 32-255
        std::vector<CodeSpan> spans;
    };
    const std::vector<CodeSpan> latin1 = {{32, 255}};
    const std::vector<CodeSpan> crowds = {{32, 126}, {0x338, 0x338}, {0x3BC, 0x3BC}, {0x2260, 0x2260}};
    const Case cases[] = {
        {kRoboto, 0, 16, nullptr, latin1},
        {kRoboto, 0, 40, nullptr, latin1},
        {kNotoSans, 0, 9, nullptr, latin1},
        {kNotoSans, 0, 16, nullptr, latin1},
        {kDejaVuSans, 0, 11, nullptr, latin1},
        {kDejaVuSans, 0, 16, nullptr, latin1},
        {kNotoSans, 0, 16, &*cp1251, {}},
        {kTestFont, 0, 16, nullptr, latin1}, // T period: 'dist' spaces it, 'kern' moves T
        // No GPOS: HarfBuzz kerns with the 'kern' table, which names only some glyphs.
        {kLegacyKernTestFont, 0, 16, nullptr, latin1},
        {kIconsFont, 0, 16, nullptr, {{65, 66}, {0xE000, 0xE001}}},
        {kCrowdsFont, 0, 16, nullptr, crowds},
        {broken.unsortedCoverage, 0, 16, nullptr, crowds},
        {broken.noGlyphCount, 0, 16, nullptr, crowds},
        // Latin, Greek and Cyrillic with combining marks, which compose with the letter before.
        {kNotoSans, 0, 16, nullptr, {{32, 126}, {160, 383}, {0x300, 0x36F, 3}, {0x370, 0x3FF}, {0x400, 0x45F}}},
        // Scripts of other shapers, Hebrew and Arabic, among Latin.
        {kDejaVuSans, 0, 13, nullptr, {{32, 126}, {0x5B0, 0x5EA}, {0x60C, 0x655}, {0x2044, 0x2044}}},
        // Japanese: Latin, CJK punctuation, kana, full-width forms and ideographs; some Hangul
        // syllables, conjoining jamo and tone marks, which the Hangul shaper composes and moves.
        {kNotoSansCjk,
         0,
         16,
         nullptr,
         {{32, 126},
          {0x3000, 0x303F},
          {0x3041, 0x3096, 2},
          {0x3099, 0x30FF, 2},
          {0xFF01, 0xFF5E, 2},
          {0x4E00, 0x9FFF, 197},
          {0xAC00, 0xD7A3, 397},
          {0x1100, 0x11C2, 5}}},
    };
    for (const auto& [path, faceIndex, height, codepage, spans] : cases) {
        ExportOptions options;
        options.kerning = KerningMode::Gpos;
        options.codepage = codepage;
        const ExportCharacters characters =
            codepage ? ListExportCharacters(CodeRange(32, 255), codepage) : CharactersOf(spans);
        FTFont ft;
        ft.LoadFace(path.c_str(), faceIndex);
        ft.SetPixelSize(height);
        const auto source = MakeKerningSource(ft, characters, options);
        hb_blob_t* blob = hb_blob_create_from_file(path.c_str());
        hb_face_t* face = hb_face_create(blob, faceIndex);
        hb_font_t* font = hb_font_create(face); // HarfBuzz's own font functions
        hb_font_set_scale(font, height * 64, height * 64);
        hb_font_set_ppem(font, height, height);
        for (const ExportCharacter& current : characters) {
            std::vector<KerningPair> expected;
            for (const ExportCharacter& prev : characters)
                if (const int value = PairValue(font, prev.character, current.character))
                    expected.push_back({prev.code, static_cast<int8_t>(value)});
            ASSERT_EQ(source->PairsOf(current.code), expected)
                << path << " at " << height << " px, after code " << current.code;
        }
        hb_font_destroy(font);
        hb_face_destroy(face);
        hb_blob_destroy(blob);
    }
}

// Past the desktop's 256 bytes, legacy kerning is looked up between characters, and asked of
// FreeType only for pairs its 'kern' table can hold.
TEST(LegacyKerning, EveryPairAsFreeTypeKernsIt)
{
    struct Case
    {
        std::string path;
        int height;
        std::vector<CodeSpan> spans;
        size_t pairs; // at least
    };
    const Case cases[] = {
        {kDejaVuSans, 16, {{32, 126}, {160, 591}, {0x370, 0x3FF}, {0x400, 0x4FF}}, 500},
        {kIconsFont, 16, {{65, 66}, {0xE000, 0xE001}}, 2},
        {kNotoSans, 16, {{32, 126}, {0x400, 0x45F}}, 0}, // no 'kern' table
    };
    for (const auto& [path, height, spans, atLeast] : cases) {
        ExportOptions options;
        options.kerning = KerningMode::Legacy;
        const ExportCharacters characters = CharactersOf(spans);
        FTFont ft;
        ft.LoadFace(path.c_str());
        ft.SetPixelSize(height);
        const auto source = MakeKerningSource(ft, characters, options);
        size_t pairs = 0;
        for (const ExportCharacter& current : characters) {
            std::vector<KerningPair> expected;
            for (const ExportCharacter& prev : characters) {
                FT_Vector kerning;
                ft.GetCharKerning(prev.character, current.character, kerning);
                if (kerning.x != 0)
                    expected.push_back({prev.code, static_cast<int8_t>(std::clamp<FT_Pos>(kerning.x, -128, 127))});
            }
            ASSERT_EQ(source->PairsOf(current.code), expected) << path << ", after code " << current.code;
            pairs += expected.size();
        }
        EXPECT_GE(pairs, atLeast) << path;
    }
}

} // namespace
