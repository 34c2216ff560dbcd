#include "export/kerning_reach.h"

#include <hb-ot.h>

#include <memory>

namespace {

using OwnedSet = std::unique_ptr<hb_set_t, decltype(&hb_set_destroy)>;

OwnedSet EmptySet()
{
    return OwnedSet(hb_set_create(), hb_set_destroy);
}

OwnedSet LookupsOf(hb_shape_plan_t* plan, hb_tag_t table)
{
    OwnedSet lookups = EmptySet();
    hb_ot_shape_plan_collect_lookups(plan, table, lookups.get());
    return lookups;
}

// The glyphs some of `lookups` may start at: a lookup first checks the glyph it stands on
// against its coverage, which HarfBuzz counts among the lookup's input glyphs.
OwnedSet InputGlyphs(hb_face_t* face, hb_tag_t table, const hb_set_t* lookups)
{
    OwnedSet glyphs = EmptySet();
    for (hb_codepoint_t lookup = HB_SET_VALUE_INVALID; hb_set_next(lookups, &lookup);)
        hb_ot_layout_lookup_collect_glyphs(face, table, lookup, nullptr, glyphs.get(), nullptr, nullptr);
    return glyphs;
}

// Scripts of HarfBuzz's default shaper, which changes no glyph but through the font's lookups.
bool ShapesPlainly(hb_script_t script)
{
    return script == HB_SCRIPT_LATIN || script == HB_SCRIPT_CYRILLIC || script == HB_SCRIPT_GREEK;
}

// Marks are the one kind of character normalization may join with the one before it.
bool IsMark(hb_codepoint_t character)
{
    const hb_unicode_general_category_t category =
        hb_unicode_general_category(hb_unicode_funcs_get_default(), character);
    return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK;
}

} // namespace

std::vector<bool> CharactersKerningMayReach(const HarfBuzzFace& face, const PairShaper& shaper,
                                            std::span<const hb_codepoint_t> characters)
{
    const std::vector<bool> everyCharacter(characters.size(), true);
    if (face.HasAppleLayout())
        return everyCharacter;
    std::vector<bool> mayReach(characters.size(), false);
    const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(), hb_buffer_destroy);
    for (const PairShaper::Plans& plans : shaper.AllPlans()) {
        const OwnedSet substitutions = LookupsOf(plans.kerningOff, HB_OT_TAG_GSUB);
        const OwnedSet otherPositioning = LookupsOf(plans.kerningOff, HB_OT_TAG_GPOS);
        const OwnedSet kerning = LookupsOf(plans.kerningOn, HB_OT_TAG_GPOS);
        const bool kerningOnlyAddsLookups =
            hb_set_is_equal(substitutions.get(), LookupsOf(plans.kerningOn, HB_OT_TAG_GSUB).get()) &&
            hb_set_is_subset(otherPositioning.get(), kerning.get());
        hb_set_subtract(kerning.get(), otherPositioning.get());
        // Without lookups of its own, 'kern' may mean the legacy kerning table.
        if (!ShapesPlainly(plans.script) || !kerningOnlyAddsLookups || hb_set_is_empty(kerning.get()))
            return everyCharacter;
        const OwnedSet substituted = InputGlyphs(shaper.Face(), HB_OT_TAG_GSUB, substitutions.get());
        const OwnedSet kerned = InputGlyphs(shaper.Face(), HB_OT_TAG_GPOS, kerning.get());
        for (size_t i = 0; i < characters.size(); ++i) {
            const hb_codepoint_t glyph = shaper.NominalGlyph(characters[i]);
            if (mayReach[i] || glyph == 0)
                continue; // a character without a glyph kerns with none
            // Shaped alone it shows whatever else changes its glyph, such as hiding an invisible character.
            const ShapedText alone = shaper.Shape(buffer.get(), {&characters[i], 1}, plans.script, Kerning::Off);
            mayReach[i] = IsMark(characters[i]) || hb_set_has(substituted.get(), glyph) || alone.glyphCount != 1 ||
                          alone.glyphs[0] != glyph || hb_set_has(kerned.get(), glyph);
        }
    }
    return mayReach;
}
