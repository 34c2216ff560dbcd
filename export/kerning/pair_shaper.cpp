#include "export/kerning/pair_shaper.h"

#include <hb-ot.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::array<hb_tag_t, 5> kLigatures = {HB_TAG('l', 'i', 'g', 'a'), HB_TAG('c', 'l', 'i', 'g'),
                                                HB_TAG('d', 'l', 'i', 'g'), HB_TAG('c', 'a', 'l', 't'),
                                                HB_TAG('r', 'l', 'i', 'g')};

using Features = std::array<hb_feature_t, kLigatures.size() + 1>;

Features FeaturesWith(Kerning kerning)
{
    Features features;
    for (std::size_t i = 0; i < kLigatures.size(); ++i)
        features[i] = {kLigatures[i], 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    features.back() = {HB_TAG('k', 'e', 'r', 'n'), kerning == Kerning::On ? 1u : 0u, HB_FEATURE_GLOBAL_START,
                       HB_FEATURE_GLOBAL_END};
    return features;
}

hb_segment_properties_t PropertiesOf(hb_script_t script)
{
    hb_segment_properties_t properties = HB_SEGMENT_PROPERTIES_DEFAULT;
    properties.direction = HB_DIRECTION_LTR;
    properties.script = script;
    return properties;
}

hb_shape_plan_t* PlanFor(hb_face_t* face, hb_script_t script, Kerning kerning)
{
    const hb_segment_properties_t properties = PropertiesOf(script);
    const Features features = FeaturesWith(kerning);
    return hb_shape_plan_create_cached(face, &properties, features.data(), features.size(), nullptr);
}

// The shaped text of `count` glyphs from `glyph` on.
ShapedText Summary(const hb_glyph_position_t* glyph, unsigned count)
{
    ShapedText shaped{count, 0};
    if (count >= 2)
        shaped.distance = glyph[0].x_advance + glyph[1].x_offset - glyph[0].x_offset;
    return shaped;
}

} // namespace

PairShaper::PairShaper(const HarfBuzzFace& face, unsigned ppem, std::span<const hb_codepoint_t> characters)
    : face(hb_face_reference(face.Get())), font(hb_font_create(face.Get())), hasAppleLayout(face.HasAppleLayout())
{
    hb_ot_font_set_funcs(font);
    const int scale = static_cast<int>(ppem) * 64;
    hb_font_set_scale(font, scale, scale);
    hb_font_set_ppem(font, ppem, ppem);
    hb_font_make_immutable(font);
    // A pair gets the script of either character, or Latin when neither has one.
    std::vector<hb_script_t> scripts;
    for (hb_codepoint_t character : characters)
        if (NominalGlyph(character) != 0)
            scripts.push_back(PairScript(character, character));
    std::sort(scripts.begin(), scripts.end());
    scripts.erase(std::unique(scripts.begin(), scripts.end()), scripts.end());
    for (hb_script_t script : scripts)
        plans.push_back({script, PlanFor(this->face, script, Kerning::Off), PlanFor(this->face, script, Kerning::On)});
}

PairShaper::~PairShaper()
{
    for (const Plans& scriptPlans : plans) {
        hb_shape_plan_destroy(scriptPlans.kerningOff);
        hb_shape_plan_destroy(scriptPlans.kerningOn);
    }
    hb_font_destroy(font);
    hb_face_destroy(face);
}

std::vector<hb_script_t> PairShaper::Scripts() const
{
    std::vector<hb_script_t> scripts;
    for (const Plans& scriptPlans : plans)
        scripts.push_back(scriptPlans.script);
    return scripts;
}

bool PairShaper::ShapeText(hb_buffer_t* buffer, std::span<const hb_codepoint_t> text, hb_script_t script,
                           Kerning kerning) const
{
    const Plans& scriptPlans =
        *std::find_if(plans.begin(), plans.end(), [script](const Plans& p) { return p.script == script; });
    const hb_segment_properties_t properties = PropertiesOf(script);
    const Features features = FeaturesWith(kerning);
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_codepoints(buffer, text.data(), static_cast<int>(text.size()), 0, static_cast<int>(text.size()));
    hb_buffer_set_segment_properties(buffer, &properties);
    return hb_shape_plan_execute(kerning == Kerning::On ? scriptPlans.kerningOn : scriptPlans.kerningOff, font, buffer,
                                 features.data(), features.size());
}

ShapedText PairShaper::Shape(hb_buffer_t* buffer, hb_codepoint_t first, hb_codepoint_t second, Kerning kerning) const
{
    const hb_codepoint_t pair[2] = {first, second};
    if (!ShapeText(buffer, pair, PairScript(first, second), kerning))
        return {};
    unsigned count = 0;
    const hb_glyph_position_t* position = hb_buffer_get_glyph_positions(buffer, &count);
    return Summary(position, count);
}

std::vector<std::optional<ShapedText>> PairShaper::ShapeNeighbours(hb_buffer_t* buffer,
                                                                   std::span<const hb_codepoint_t> text,
                                                                   hb_script_t script, Kerning kerning) const
{
    std::vector<std::optional<ShapedText>> pairs(std::max<size_t>(text.size(), 1) - 1);
    // Apple layout tables and other shapers may look at text around a piece.
    if (hasAppleLayout || !ShapedPlainly(script) || !ShapeText(buffer, text, script, kerning))
        return pairs;
    unsigned count = 0;
    const hb_glyph_info_t* info = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* position = hb_buffer_get_glyph_positions(buffer, &count);
    // The first glyph of the cluster each character starts, or -1; clusters are the
    // characters' places, in order. The end of the text is a place too.
    std::vector<int> clusterStart(text.size() + 1, -1);
    for (unsigned glyph = count; glyph-- > 0;)
        clusterStart[info[glyph].cluster] = static_cast<int>(glyph);
    clusterStart.back() = static_cast<int>(count);
    auto safeToBreakBefore = [&](size_t place) {
        return clusterStart[place] >= 0 &&
               (place == 0 || place == text.size() ||
                !(hb_glyph_info_get_glyph_flags(&info[clusterStart[place]]) & HB_GLYPH_FLAG_UNSAFE_TO_BREAK));
    };
    for (size_t i = 0; i < pairs.size(); ++i)
        if (safeToBreakBefore(i) && safeToBreakBefore(i + 2))
            pairs[i] =
                Summary(position + clusterStart[i], static_cast<unsigned>(clusterStart[i + 2] - clusterStart[i]));
    return pairs;
}

hb_codepoint_t PairShaper::NominalGlyph(hb_codepoint_t character) const
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(font, character, &glyph) ? glyph : 0;
}

std::vector<hb_shape_plan_t*> PairShaper::ShapePlans() const
{
    std::vector<hb_shape_plan_t*> all;
    for (const Plans& scriptPlans : plans) {
        all.push_back(scriptPlans.kerningOff);
        all.push_back(scriptPlans.kerningOn);
    }
    return all;
}

hb_script_t CharacterScript(hb_codepoint_t character)
{
    const hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), character);
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED ? HB_SCRIPT_UNKNOWN : script;
}

bool ShapedPlainly(hb_script_t script)
{
    switch (script) {
    case HB_SCRIPT_LATIN:
    case HB_SCRIPT_CYRILLIC:
    case HB_SCRIPT_GREEK:
    case HB_SCRIPT_ARMENIAN:
    case HB_SCRIPT_GEORGIAN:
    case HB_SCRIPT_HAN:
    case HB_SCRIPT_HIRAGANA:
    case HB_SCRIPT_KATAKANA:
    case HB_SCRIPT_BOPOMOFO:
        return true;
    default:
        return false;
    }
}

hb_script_t PairScript(hb_codepoint_t first, hb_codepoint_t second)
{
    const hb_script_t script =
        CharacterScript(first) != HB_SCRIPT_UNKNOWN ? CharacterScript(first) : CharacterScript(second);
    return script != HB_SCRIPT_UNKNOWN ? script : HB_SCRIPT_LATIN;
}
