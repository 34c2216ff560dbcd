#pragma once

#include "export/kerning/harfbuzz_face.h"

#include <hb.h>

#include <optional>
#include <span>
#include <vector>

enum class Kerning
{
    Off,
    On
}; // the font's 'kern' feature

// A shaped pair as far as kerning needs it.
struct ShapedText
{
    unsigned glyphCount = 0;
    // Where the second glyph is drawn from where the first is (26.6): the first glyph's
    // advance plus the second's x offset minus the first's.
    hb_position_t distance = 0;
};

// Shapes text the way GPOS kerning is defined: HarfBuzz's own font functions, the face
// scaled to `ppem` pixels both ways in 26.6 with that ppem, left to right, the buffer's
// language unset (so the user's locale plays no part), the ligature features liga, clig,
// dlig, calt and rlig off, and 'kern' on or off.
// Safe to share between threads once made; each thread brings its own buffer.
class PairShaper
{
public:
    // Ready to shape pairs of `characters`: plans for every script a pair of them gets.
    PairShaper(const HarfBuzzFace& face, unsigned ppem, std::span<const hb_codepoint_t> characters);
    ~PairShaper();
    PairShaper(const PairShaper&) = delete;
    PairShaper& operator=(const PairShaper&) = delete;

    // Every script a pair of the characters gets.
    std::vector<hb_script_t> Scripts() const;
    // A pair alone, in the script it gets (PairScript).
    ShapedText Shape(hb_buffer_t* buffer, hb_codepoint_t first, hb_codepoint_t second, Kerning kerning) const;
    // Every two neighbours in `text`, all pairs getting `script`: pair i is text[i] and
    // text[i + 1], as HarfBuzz vouches it shapes alone, or nullopt where it does not
    // (docs/gpos-kerning-texts.md).
    std::vector<std::optional<ShapedText>> ShapeNeighbours(hb_buffer_t* buffer, std::span<const hb_codepoint_t> text,
                                                           hb_script_t script, Kerning kerning) const;
    // The character's glyph in the font's character map; 0 when it has none.
    hb_codepoint_t NominalGlyph(hb_codepoint_t character) const;
    // The plans pairs are shaped with: every script's, with 'kern' off and on.
    std::vector<hb_shape_plan_t*> ShapePlans() const;

private:
    struct Plans
    {
        hb_script_t script;
        hb_shape_plan_t* kerningOff;
        hb_shape_plan_t* kerningOn;
    };

    // Shapes `text` into `buffer`; false when HarfBuzz fails.
    bool ShapeText(hb_buffer_t* buffer, std::span<const hb_codepoint_t> text, hb_script_t script,
                   Kerning kerning) const;

    hb_face_t* face;
    hb_font_t* font;
    std::vector<Plans> plans;
    bool hasAppleLayout;
};

// The script of the buffer a pair is shaped in: the first of the two characters' scripts
// that is not Common, Inherited or Unknown; Latin when neither is.
hb_script_t PairScript(hb_codepoint_t first, hb_codepoint_t second);

// The character's script, or HB_SCRIPT_UNKNOWN for Common, Inherited and Unknown.
hb_script_t CharacterScript(hb_codepoint_t character);

// Scripts HarfBuzz shapes with its default shaper and writes left to right natively. That
// shaper looks at no text around the buffer, and tells two characters with glyphs apart by
// their glyphs and their Unicode general category alone, except for marks, default
// ignorables, a few that join a cluster before them (emoji modifiers, regional indicators,
// the halfwidth katakana sound marks) and U+2044 FRACTION SLASH, which makes the digits
// beside it a fraction: no joining forms, syllables or reordering.
bool ShapedPlainly(hb_script_t script);
