#include "export/kerning/kern_table.h"

namespace {

uint16_t U16(std::span<const uint8_t> bytes, size_t at)
{
    return static_cast<uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

void Mark(std::vector<bool>& glyphs, uint16_t glyph)
{
    if (glyph >= glyphs.size())
        glyphs.resize(glyph + 1u);
    glyphs[glyph] = true;
}

} // namespace

KernTableGlyphs ReadKernTableGlyphs(std::span<const uint8_t> table)
{
    KernTableGlyphs glyphs;
    if (table.empty())
        return glyphs;
    // The OpenType table: version 0, a count of subtables; an Apple one starts with 1.
    if (table.size() < 4 || U16(table, 0) != 0) {
        glyphs.holdsMore = true;
        return glyphs;
    }
    const unsigned subtables = U16(table, 2);
    size_t at = 4;
    for (unsigned n = 0; n < subtables && at + 6 <= table.size(); ++n) {
        // version, length, format (high byte) and coverage (low byte)
        const size_t length = U16(table, at + 2);
        const unsigned format = U16(table, at + 4) >> 8;
        if (format != 0 || length < 14 || at + 14 > table.size()) {
            glyphs.holdsMore = true;
            return glyphs;
        }
        const size_t pairs = U16(table, at + 6);
        const size_t first = at + 14; // after the pair count and three binary search fields
        for (size_t pair = 0; pair < pairs && first + 6 * pair + 6 <= table.size(); ++pair) {
            Mark(glyphs.first, U16(table, first + 6 * pair));
            Mark(glyphs.second, U16(table, first + 6 * pair + 2));
        }
        at += length;
    }
    return glyphs;
}
