#include "cli/missing_glyphs.h"

#include "charset/codepage.h"
#include "charset/unicode_text.h"
#include "cli/export_report.h"

#include <iterator>
#include <map>

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

// Missing codes in ascending order, each with its character.
using MissingCodes = std::map<uint32_t, char32_t>;

std::string CodeRanges(const MissingCodes& missing)
{
    std::string ranges;
    for (auto run = missing.begin(); run != missing.end();) {
        auto last = run;
        while (std::next(last) != missing.end() && std::next(last)->first == last->first + 1)
            ++last;
        ranges += (ranges.empty() ? "" : ", ") + std::to_string(run->first);
        if (last != run)
            ranges += "-" + std::to_string(last->first);
        run = std::next(last);
    }
    return ranges;
}

// "207 "П" (U+041F), 240 "р" (U+0440)", in code order.
std::string NamedCodes(const MissingCodes& missing)
{
    std::string named;
    for (const auto& [code, character] : missing)
        named += (named.empty() ? "" : ", ") + std::to_string(code) + " " + NamedCharacter(character);
    return named;
}

} // namespace

MissingGlyphs FindMissingGlyphs(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                                const Codepage* codepage)
{
    MissingCodes missing;
    for (const ExportCharacter& listed : characters)
        if (fonts.at(listed.font)->GlyphIndex(listed.character) == 0)
            missing.emplace(listed.code, listed.character);
    const std::string codes = missing.size() <= kMaxNamedCodes ? NamedCodes(missing) : CodeRanges(missing);
    const bool all = missing.size() == characters.size();
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
