#pragma once

#include <hb.h>

#include <array>
#include <vector>

// What shaping one or two characters gave, as far as kerning values need it.
struct ShapedText
{
    unsigned glyphs = 0;
    // Of the first two glyphs (26.6).
    std::array<hb_position_t, 2> advance{};
    std::array<hb_position_t, 2> offset{}; // x offsets
    // Two glyphs, one per character, and HarfBuzz marks the place between them safe to
    // break (the text cut there and each side shaped alone gives the same glyphs and
    // positions) or safe to concatenate (either side may be replaced by other text
    // without changing the shaping of the other). The latter is only looked for when
    // asked for.
    bool safeToBreak = false;
    bool safeToConcat = false;

    // advance of the first glyph + x offset of the second - x offset of the first
    hb_position_t Distance() const { return advance[0] + offset[1] - offset[0]; }
};

// Shapes text the way GPOS kerning is defined: HarfBuzz's own font functions, the face
// scaled to `ppem` pixels both ways in 26.6 with that ppem, left to right, the buffer's
// language unset (so the user's locale plays no part), the ligature features liga, clig,
// dlig, calt and rlig off, and 'kern' on or off.
// Prepare every script before threads share the shaper; each thread brings its own buffer.
class PairShaper
{
public:
    PairShaper(hb_face_t* face, unsigned ppem);
    ~PairShaper();
    PairShaper(const PairShaper&) = delete;
    PairShaper& operator=(const PairShaper&) = delete;

    // Makes the two shaping plans (kern on, kern off) of `script`.
    void Prepare(hb_script_t script);
    // Whether the two plans of a prepared script apply the same substitutions, so that
    // the 'kern' feature only adds positioning lookups.
    bool KernOnlyPositions(hb_script_t script) const;
    // One or two characters in a prepared script.
    ShapedText Shape(hb_buffer_t* buffer, const hb_codepoint_t* text, unsigned length, hb_script_t script,
                     bool kern, bool concatFlags = false) const;
    // Any text in a prepared script; the glyphs stay in `buffer`. False when shaping failed.
    bool ShapeText(hb_buffer_t* buffer, const hb_codepoint_t* text, unsigned length, hb_script_t script, bool kern,
                   bool concatFlags = false) const;
    // Whether the character maps to a glyph other than glyph 0.
    bool HasGlyph(hb_codepoint_t character) const;

private:
    struct Plans
    {
        hb_script_t script;
        hb_shape_plan_t* kernOn;
        hb_shape_plan_t* kernOff;
        bool kernOnlyPositions;
    };
    const Plans& PlansOf(hb_script_t script) const;

    hb_face_t* face;
    hb_font_t* font;
    std::vector<Plans> plans;
};

// The Unicode script of a character.
hb_script_t ScriptOf(hb_codepoint_t character);

// The script the buffer of two characters of these scripts gets: the first that is not
// Common, Inherited or Unknown; Latin when neither is.
hb_script_t PairScript(hb_script_t first, hb_script_t second);
