#include "export/kerning/legacy_kerning.h"

#include "export/kerning/kern_table.h"

#include FT_TRUETYPE_TABLES_H
#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <numeric>

namespace {

// Kerning beyond the 8-bit delta's range is clamped.
int8_t Clamped(FT_Pos kerning)
{
    return static_cast<int8_t>(std::clamp<FT_Pos>(kerning, INT8_MIN, INT8_MAX));
}

// The face's 'kern' table; empty when it has none or FreeType cannot read it.
std::vector<uint8_t> KernTable(FT_Face face)
{
    FT_ULong length = 0;
    if (FT_Load_Sfnt_Table(face, TTAG_kern, 0, nullptr, &length) != 0 || length == 0)
        return {};
    std::vector<uint8_t> bytes(length);
    if (FT_Load_Sfnt_Table(face, TTAG_kern, 0, bytes.data(), &length) != 0)
        return {};
    return bytes;
}

} // namespace

std::vector<KerningPair> CollectKerningPairs(FTFont* font, const CharCodeList* codes, uint32_t code)
{
    // Both sides are cut to char as the generated table stores them.
    const char right = static_cast<char>(code);
    std::vector<KerningPair> pairs;
    for (uint32_t prevCode : *codes) {
        FT_Vector kerning;
        font->GetKerning(static_cast<char>(prevCode), right, kerning);
        if (kerning.x != 0)
            pairs.push_back(KerningPair{prevCode, Clamped(kerning.x)});
    }
    return pairs;
}

std::vector<KerningTable::Entry> CollectKerningPairs(FTFont& font, const ExportCharacters& characters)
{
    std::vector<KerningTable::Entry> entries;
    const FT_Face face = font.Face();
    if (!FT_HAS_KERNING(face))
        return entries; // FreeType kerns no pair of such a face
    // FreeType's sfnt faces kern from the 'kern' table's format-0 pairs alone; other faces
    // (Type 1 with metrics attached, PFR) are asked about every pair.
    std::vector<uint32_t> befores(characters.size());
    std::iota(befores.begin(), befores.end(), 0u);
    std::vector<uint32_t> afters = befores;
    if (FT_IS_SFNT(face)) {
        const std::vector<uint8_t> table = KernTable(face);
        const KernTableGlyphs glyphs = ReadKernTableGlyphs(table);
        if (!table.empty() && !glyphs.holdsMore) {
            auto keep = [&](std::vector<uint32_t>& list, bool first) {
                std::erase_if(list, [&](uint32_t i) {
                    const FT_UInt glyph = font.GlyphIndex(characters[i].character);
                    return !(first ? glyphs.IsFirst(glyph) : glyphs.IsSecond(glyph));
                });
            };
            keep(befores, true);
            keep(afters, false);
        }
    }
    for (uint32_t after : afters)
        for (uint32_t before : befores) {
            FT_Vector kerning;
            font.GetCharKerning(characters[before].character, characters[after].character, kerning);
            if (kerning.x != 0)
                entries.push_back({before, after, Clamped(kerning.x)});
        }
    return entries;
}
