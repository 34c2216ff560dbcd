#include "cli/missing_glyphs.h"

#include "charset/codepage.h"

#include <algorithm>
#include <array>

namespace {

// The font's own encoding, when it may lack characters of the codes' codepage.
std::string FontEncodingNote(const FTFont& font, const Codepage* codepage)
{
    const Codepage* own = font.OwnEncoding();
    if (own == nullptr || own->SameCharacters(codepage ? *codepage : Codepage::Latin1()))
        return "";
    return " (the font is encoded in " + own->Name() + ")";
}

} // namespace

MissingGlyphs FindMissingGlyphs(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                                const Codepage* codepage)
{
    std::array<bool, 256> missing{};
    for (const ExportCharacter& listed : characters)
        missing[listed.code] = fonts.at(listed.font)->GlyphIndex(listed.character) == 0;

    std::string ranges;
    for (unsigned first = 0; first < missing.size(); ++first) {
        if (!missing[first])
            continue;
        unsigned last = first;
        while (last + 1 < missing.size() && missing[last + 1])
            ++last;
        if (!ranges.empty())
            ranges += ", ";
        ranges += std::to_string(first);
        if (last != first) {
            ranges += '-';
            ranges += std::to_string(last);
        }
        first = last;
    }
    const bool all = std::all_of(characters.begin(), characters.end(),
                                 [&](const ExportCharacter& listed) { return missing[listed.code]; });
    return {ranges, all, FontEncodingNote(*fonts.front(), codepage)};
}

std::optional<std::string> MissingGlyphWarning(const MissingGlyphs& missing)
{
    if (missing.ranges.empty())
        return std::nullopt;
    return "no glyph for " + missing.ranges + missing.encodingNote +
           "; they are exported as the font's missing-glyph shape";
}
