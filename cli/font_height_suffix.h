#pragma once

#include <optional>
#include <string>

// An extra font as --glyphs and --fallback take it: FONT, FONT#FACE for a face of a
// collection (counted from 0), and either with @PX for a font drawn at a pixel height of its
// own rather than the export's, e.g. NotoSans-Regular.ttf@14, NotoSansCJK-Regular.ttc#2@16.
struct ExtraFont
{
    std::string path;
    std::optional<std::string> heightText; // PX as typed, when given
    long face = 0;
};

// Splits "FONT#FACE@PX" at its last "@" when what follows reads as a height (digits, or 0x
// and hex digits), then at the last "#" when digits alone follow it (up to 65535); any
// other text is part of the path.
ExtraFont SplitFontHeight(const std::string& text);
