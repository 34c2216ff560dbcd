// GPOS kerning against its definition: every pair shaped alone, with 'kern' on and off.

#include "charset/codepage.h"
#include "export/kerning/kerning_source.h"
#include "test_support.h"

#include <hb.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

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

TEST(GposKerning, EveryPairAsShapedAlone)
{
    std::string error;
    const std::optional<Codepage> cp1251 = Codepage::Open("CP1251", error);
    const std::tuple<std::string, int, const Codepage*> cases[] = {
        {kRoboto, 16, nullptr},    {kRoboto, 40, nullptr},     {kNotoSans, 9, nullptr},
        {kNotoSans, 16, nullptr},  {kDejaVuSans, 11, nullptr}, {kDejaVuSans, 16, nullptr},
        {kNotoSans, 16, &*cp1251}, {kTestFont, 16, nullptr}}; // T period: 'dist' spaces it, 'kern' moves T
    for (const auto& [path, height, codepage] : cases) {
        ExportOptions options;
        options.kerning = KerningMode::Gpos;
        options.codepage = codepage;
        CharCodeList codes;
        for (uint32_t code = 32; code <= 255; ++code)
            if (!codepage || codepage->CharacterOf(code))
                codes.push_back(code);
        FTFont ft;
        ft.LoadFace(path.c_str());
        ft.SetPixelSize(height);
        const ExportCharacters characters = ListExportCharacters(codes, codepage);
        const auto source = MakeKerningSource(ft, characters, options);
        hb_blob_t* blob = hb_blob_create_from_file(path.c_str());
        hb_face_t* face = hb_face_create(blob, 0);
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

} // namespace
