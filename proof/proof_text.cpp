#include "proof/proof_text.h"

#include "charset/codepage.h"

#include <map>

namespace {

// `characters` as lines of the codes that stand for them; nothing, with `lines` set, when
// every character has one, else the first that has none, leaving `lines` alone.
std::optional<char32_t> LinesOf(const std::u32string& characters, const std::map<char32_t, uint32_t>& codeOf,
                                ProofLines& lines)
{
    ProofLines fromText(1);
    for (char32_t character : characters) {
        if (character == U'\n') {
            fromText.emplace_back();
            continue;
        }
        if (character == U'\r') // of a line end written "\r\n"
            continue;
        const auto found = codeOf.find(character);
        if (found == codeOf.end())
            return character;
        fromText.back().push_back(found->second);
    }
    lines = std::move(fromText);
    return std::nullopt;
}

} // namespace

std::optional<std::string> ReadProofText(const std::optional<std::string>& text, const ExportCharacters& characters,
                                         ProofLines& lines)
{
    if (!text) {
        ProofLines byList;
        for (const ExportCharacter& listed : characters) {
            if (byList.empty() || byList.back().size() == kProofCharactersPerLine)
                byList.emplace_back();
            byList.back().push_back(listed.code);
        }
        lines = std::move(byList);
        return std::nullopt;
    }

    const std::vector<std::u32string> readings = TextReadings(*text);
    if (readings.empty())
        return "The proof text is not valid UTF-8 !";
    std::map<char32_t, uint32_t> codeOf;
    for (const ExportCharacter& listed : characters)
        codeOf.emplace(listed.character, listed.code);
    std::optional<char32_t> missing;
    for (const std::u32string& reading : readings) {
        const std::optional<char32_t> lacked = LinesOf(reading, codeOf, lines);
        if (!lacked)
            return std::nullopt;
        if (!missing)
            missing = lacked;
    }
    return "Character " + NamedCharacter(*missing) + " is not among the exported characters !";
}
