// GPOS kerning against its definition, worked out the slow way: every pair shaped alone,
// once with 'kern' on and once off, with HarfBuzz's own font functions.

#include "charset/codepage.h"
#include "export/export_test_support.h"
#include "export/font_source.h"
#include "export/kerning_source.h"

#include <hb-ot.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

int ShapedDistance(hb_font_t* font, char32_t first, char32_t second, bool kern)
{
    hb_script_t script = HB_SCRIPT_LATIN;
    for (char32_t c : {second, first}) // the first one with a script of its own decides
        if (hb_script_t s = hb_unicode_script(hb_unicode_funcs_get_default(), c);
            s != HB_SCRIPT_COMMON && s != HB_SCRIPT_INHERITED && s != HB_SCRIPT_UNKNOWN)
            script = s;
    hb_feature_t features[6];
    for (int i = 0; const char* f : {"liga=0", "clig=0", "dlig=0", "calt=0", "rlig=0", kern ? "kern" : "kern=0"})
        hb_feature_from_string(f, -1, &features[i++]);
    hb_buffer_t* buffer = hb_buffer_create();
    const uint32_t text[2] = {first, second};
    hb_buffer_add_codepoints(buffer, text, 2, 0, 2);
    hb_buffer_set_direction(buffer, HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, script);
    hb_shape(font, buffer, features, 6);
    unsigned count = 0;
    const hb_glyph_position_t* p = hb_buffer_get_glyph_positions(buffer, &count);
    const int distance = count == 2 ? p[0].x_advance + p[1].x_offset - p[0].x_offset : INT32_MIN;
    hb_buffer_destroy(buffer);
    return distance;
}

int PairValue(hb_font_t* font, char32_t first, char32_t second)
{
    hb_codepoint_t a = 0, b = 0;
    hb_font_get_nominal_glyph(font, first, &a);
    hb_font_get_nominal_glyph(font, second, &b);
    const int on = ShapedDistance(font, first, second, true), off = ShapedDistance(font, first, second, false);
    return a == 0 || b == 0 || on == INT32_MIN || off == INT32_MIN ? 0 : std::clamp((on - off + 32) >> 6, -128, 127);
}

TEST(GposKerning, EveryPairAsShapedAlone)
{
    const std::string roboto = "/usr/share/fonts/truetype/roboto/unhinted/RobotoTTF/Roboto-Regular.ttf";
    const std::string noto = "/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf";
    std::string error;
    const Codepage cp1251 = *Codepage::Open("CP1251", error);
    const struct {
        std::string font;
        unsigned height;
        const Codepage* codepage;
    } cases[] = {{roboto, 16, nullptr}, {roboto, 40, nullptr}, {noto, 9, nullptr}, {noto, 16, nullptr},
                 {kDejaVuSans, 11, nullptr}, {kDejaVuSans, 16, nullptr}, {noto, 16, &cp1251}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.font + " at " + std::to_string(c.height));
        ExportOptions options{KerningMode::Gpos, c.codepage, {}};
        CharCodeList codes;
        for (uint32_t code = 32; code <= 255; ++code)
            if (!c.codepage || c.codepage->CharacterOf(code))
                codes.push_back(code);
        FTFont font;
        font.LoadFace(c.font.c_str());
        font.SetPixelSize(c.height);
        const auto source = MakeKerningSource(font, codes, options);
        hb_blob_t* blob = hb_blob_create_from_file(c.font.c_str());
        hb_face_t* face = hb_face_create(blob, 0);
        hb_font_t* shaping = hb_font_create(face);
        hb_ot_font_set_funcs(shaping);
        hb_font_set_scale(shaping, c.height * 64, c.height * 64);
        hb_font_set_ppem(shaping, c.height, c.height);
        for (uint32_t code : codes) {
            std::vector<KerningPair> expected;
            for (uint32_t prev : codes)
                if (int value = PairValue(shaping, CharacterFor(prev, options), CharacterFor(code, options)))
                    expected.push_back({static_cast<char>(prev), static_cast<int8_t>(value)});
            ASSERT_EQ(source->PairsOf(code), expected) << "after code " << code;
        }
        hb_font_destroy(shaping);
        hb_face_destroy(face);
        hb_blob_destroy(blob);
    }
}

} // namespace
