#include "cli/missing_glyphs.h"

#include "charset/codepage.h"
#include "charset/unicode_text.h"
#include "cli/export_report.h"

#include <algorithm>
#include <array>

namespace {

// As many missing codes as are named each with its character; more are given as ranges.
constexpr size_t kMaxNamedCodes = 8;

// The font's own encoding, when it may lack characters of the codes' codepage; without a
// codepage, its own is the one whose bytes find every glyph.
std::string FontEncodingNote(const FTFont& font, const Codepage* codepage)
{
    const Codepage* own = font.OwnEncoding();
    if (own == nullptr || own->SameCharacters(codepage ? *codepage : Codepage::Latin1()))
        return "";
    const std::string suggestion = codepage ? "" : "; give --codepage " + own->Name();
    return " (the font is encoded in " + own->Name() + suggestion + ")";
}

std::string CodeRanges(const std::array<bool, 256>& missing)
{
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
    return ranges;
}

// "207 "П" (U+041F), 240 "р" (U+0440)", in code order.
std::string NamedCodes(const std::array<bool, 256>& missing, const ExportCharacters& characters)
{
    std::array<const ExportCharacter*, 256> byCode{};
    for (const ExportCharacter& listed : characters)
        byCode[listed.code] = &listed;
    std::string named;
    for (unsigned code = 0; code < missing.size(); ++code) {
        if (missing[code] && byCode[code] != nullptr)
            named += (named.empty() ? "" : ", ") + std::to_string(code) + " " + NamedCharacter(byCode[code]->character);
    }
    return named;
}

} // namespace

MissingGlyphs FindMissingGlyphs(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                                const Codepage* codepage)
{
    std::array<bool, 256> missing{};
    for (const ExportCharacter& listed : characters)
        missing[listed.code] = fonts.at(listed.font)->GlyphIndex(listed.character) == 0;

    const size_t count = static_cast<size_t>(std::count(missing.begin(), missing.end(), true));
    const std::string codes = count <= kMaxNamedCodes ? NamedCodes(missing, characters) : CodeRanges(missing);
    const bool all = std::all_of(characters.begin(), characters.end(),
                                 [&](const ExportCharacter& listed) { return missing[listed.code]; });
    return {codes, all, FontEncodingNote(*fonts.front(), codepage)};
}

std::string FontsTried(const std::vector<std::string>& paths)
{
    std::string named;
    for (size_t i = 0; i < paths.size(); ++i)
        named += (i == 0 ? "" : i + 1 == paths.size() ? " or " : ", ") + Quoted(paths[i]);
    return named;
}

std::optional<std::string> MissingGlyphWarning(const MissingGlyphs& missing, const std::string& fontsTried)
{
    if (missing.codes.empty())
        return std::nullopt;
    const std::string where = fontsTried.empty() ? "" : " in " + fontsTried;
    return "no glyph" + where + " for " + missing.codes + missing.encodingNote +
           "; they are exported as the font's missing-glyph shape";
}
