#include "export/pair_shaper.h"

#include <hb-ot.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::array<hb_tag_t, 5> kLigatures = {HB_TAG('l', 'i', 'g', 'a'), HB_TAG('c', 'l', 'i', 'g'),
                                                HB_TAG('d', 'l', 'i', 'g'), HB_TAG('c', 'a', 'l', 't'),
                                                HB_TAG('r', 'l', 'i', 'g')};

using Features = std::array<hb_feature_t, kLigatures.size() + 1>;

Features FeaturesWith(bool kern)
{
    Features features;
    for (std::size_t i = 0; i < kLigatures.size(); ++i)
        features[i] = {kLigatures[i], 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    features.back() = {HB_TAG('k', 'e', 'r', 'n'), kern ? 1u : 0u, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    return features;
}

hb_segment_properties_t PropertiesOf(hb_script_t script)
{
    hb_segment_properties_t properties = HB_SEGMENT_PROPERTIES_DEFAULT;
    properties.direction = HB_DIRECTION_LTR;
    properties.script = script;
    return properties;
}

bool HasScript(hb_script_t script)
{
    return script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN;
}

} // namespace

PairShaper::PairShaper(hb_face_t* face, unsigned ppem) : face(hb_face_reference(face)), font(hb_font_create(face))
{
    hb_ot_font_set_funcs(font);
    const int scale = static_cast<int>(ppem) * 64;
    hb_font_set_scale(font, scale, scale);
    hb_font_set_ppem(font, ppem, ppem);
    hb_font_make_immutable(font);
}

PairShaper::~PairShaper()
{
    for (const Plans& p : plans) {
        hb_shape_plan_destroy(p.kernOn);
        hb_shape_plan_destroy(p.kernOff);
    }
    hb_font_destroy(font);
    hb_face_destroy(face);
}

void PairShaper::Prepare(hb_script_t script)
{
    for (const Plans& p : plans)
        if (p.script == script)
            return;
    const hb_segment_properties_t properties = PropertiesOf(script);
    const Features on = FeaturesWith(true), off = FeaturesWith(false);
    Plans prepared{script, hb_shape_plan_create_cached(face, &properties, on.data(), on.size(), nullptr),
                   hb_shape_plan_create_cached(face, &properties, off.data(), off.size(), nullptr), false};
    hb_set_t* substitutionsOn = hb_set_create();
    hb_set_t* substitutionsOff = hb_set_create();
    hb_ot_shape_plan_collect_lookups(prepared.kernOn, HB_OT_TAG_GSUB, substitutionsOn);
    hb_ot_shape_plan_collect_lookups(prepared.kernOff, HB_OT_TAG_GSUB, substitutionsOff);
    prepared.kernOnlyPositions = hb_set_is_equal(substitutionsOn, substitutionsOff);
    hb_set_destroy(substitutionsOn);
    hb_set_destroy(substitutionsOff);
    plans.push_back(prepared);
}

const PairShaper::Plans& PairShaper::PlansOf(hb_script_t script) const
{
    return *std::find_if(plans.begin(), plans.end(), [script](const Plans& p) { return p.script == script; });
}

bool PairShaper::KernOnlyPositions(hb_script_t script) const
{
    return PlansOf(script).kernOnlyPositions;
}

bool PairShaper::ShapeText(hb_buffer_t* buffer, const hb_codepoint_t* text, unsigned length, hb_script_t script,
                           bool kern, bool concatFlags) const
{
    const Plans& chosen = PlansOf(script);
    const hb_segment_properties_t properties = PropertiesOf(script);
    const Features features = FeaturesWith(kern);
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_codepoints(buffer, text, static_cast<int>(length), 0, static_cast<int>(length));
    hb_buffer_set_segment_properties(buffer, &properties);
    hb_buffer_set_flags(buffer, concatFlags ? HB_BUFFER_FLAG_PRODUCE_UNSAFE_TO_CONCAT : HB_BUFFER_FLAG_DEFAULT);
    return hb_shape_plan_execute(kern ? chosen.kernOn : chosen.kernOff, font, buffer, features.data(), features.size());
}

ShapedText PairShaper::Shape(hb_buffer_t* buffer, const hb_codepoint_t* text, unsigned length, hb_script_t script,
                             bool kern, bool concatFlags) const
{
    ShapedText shaped;
    if (!ShapeText(buffer, text, length, script, kern, concatFlags))
        return shaped;
    unsigned count = 0;
    const hb_glyph_info_t* info = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* position = hb_buffer_get_glyph_positions(buffer, &count);
    shaped.glyphs = count;
    for (unsigned i = 0; i < count && i < 2; ++i) {
        shaped.advance[i] = position[i].x_advance;
        shaped.offset[i] = position[i].x_offset;
    }
    if (count == 2 && info[0].cluster == 0 && info[1].cluster == 1) {
        const hb_glyph_flags_t flags = hb_glyph_info_get_glyph_flags(&info[1]);
        shaped.safeToBreak = !(flags & HB_GLYPH_FLAG_UNSAFE_TO_BREAK);
        shaped.safeToConcat = concatFlags && !(flags & HB_GLYPH_FLAG_UNSAFE_TO_CONCAT);
    }
    return shaped;
}

bool PairShaper::HasGlyph(hb_codepoint_t character) const
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(font, character, &glyph) && glyph != 0;
}

hb_script_t ScriptOf(hb_codepoint_t character)
{
    return hb_unicode_script(hb_unicode_funcs_get_default(), character);
}

hb_script_t PairScript(hb_script_t first, hb_script_t second)
{
    return HasScript(first) ? first : HasScript(second) ? second : HB_SCRIPT_LATIN;
}
