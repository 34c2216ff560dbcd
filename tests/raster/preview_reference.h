#pragma once

#include "charset/char_code_list.h"

#include <cstdint>
#include <string>
#include <vector>

// A grey picture, one byte per pixel, rows top-down.
struct GreyPicture
{
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint8_t> grey;

    uint8_t At(uint32_t x, uint32_t y) const { return grey[size_t{y} * width + x]; }
};

// The preview of `codes` in the font file, worked out straight from FreeType and the
// blending rule, without the tool's code: cell i lies in column i % n and row i / n,
// n = width / L, L the line height at 36 px; in an area narrower than L the first cell
// opens the second row and the others follow it to the right. Every cell is drawn.
GreyPicture ReferencePreview(const std::string& fontPath, const CharCodeList& codes,
                             uint32_t width, uint32_t height);

// The font's line height at 36 px, as FreeType gives it.
uint32_t LineHeightAt36(const std::string& fontPath);
