#pragma once

#include <cstdint>
#include <span>
#include <vector>

// Which glyphs the pairs of a font's 'kern' table name, read from the table's bytes.
struct KernTableGlyphs
{
    // Indexed by glyph: whether it stands first, or second, in a pair of a format-0
    // subtable. Both as long as the largest glyph index a pair names, plus one.
    std::vector<bool> first;
    std::vector<bool> second;
    // Whether the table holds more than format-0 subtables of the OpenType layout: subtables
    // of another format, an Apple 'kern' table, or bytes that do not parse.
    bool holdsMore = false;

    bool IsFirst(uint32_t glyph) const { return glyph < first.size() && first[glyph]; }
    bool IsSecond(uint32_t glyph) const { return glyph < second.size() && second[glyph]; }
};

// Every pair FreeType's or HarfBuzz's reading of the table can find is among the glyphs
// returned (they may find fewer: FreeType takes only horizontal subtables, and at most 32);
// the pairs are read up to their count even where a subtable's length says less, as
// HarfBuzz reads the last subtable. An empty table holds nothing.
KernTableGlyphs ReadKernTableGlyphs(std::span<const uint8_t> table);
