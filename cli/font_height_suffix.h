#pragma once

#include <optional>
#include <string>

// An extra font as --glyphs and --fallback take it: FONT, or FONT@PX for a font drawn at a
// pixel height of its own rather than the export's, e.g. NotoSans-Regular.ttf@14.
struct ExtraFont
{
    std::string path;
    std::optional<std::string> heightText; // PX as typed, when given
};

// Splits "FONT@PX" at its last "@" when what follows reads as a height (digits, or 0x and
// hex digits); any other text is the path alone.
ExtraFont SplitFontHeight(const std::string& text);
