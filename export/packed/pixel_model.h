#pragma once

#include "export/packed/packed_font.h"
#include "export/packed/packed_pixels.h"

#include <vector>

// The model coding: each pixel coded arithmetically, its chances looked up by the pattern
// of the pixels around it already decoded, in tables fitted to the whole font.

// Where a model looks to tell whether a pixel is 0 or full: on the line being coded,
// `current` pixels (0 to 4) before the pixel; on the line before and the one before that,
// the pixels from `reach` before to `reach` after it (-1: none; at most 4).
struct ModelWindows
{
    unsigned current = 0;
    int before = -1;
    int beforeThat = -1;

    unsigned Bits() const;
};

// The longest line of the model coding, a row or with packed::kColumns a column.
constexpr unsigned kMaxModelLine = 32 - packed::kModelMargin;

// Codes with a model fitted to the font the glyphs whose pixels that makes smaller, where
// the model repays its tables; the others keep their coding. Sets the font's model
// members (none when no glyph takes the model). With `everyGlyph`, codes every glyph the
// model can take with it, whatever that costs.
void ApplyPixelModel(std::vector<StoredPixels>& glyphs, unsigned bpp, bool everyGlyph, PackedFont& font);
