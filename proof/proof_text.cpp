#include "proof/proof_text.h"

#include "charset/codepage.h"
#include "export/font_source.h"

#include <map>

std::optional<std::string> ReadProofText(const std::optional<std::string>& text, const CharCodeList& codes,
                                         const ExportOptions& options, ProofLines& lines)
{
    if (!text) {
        ProofLines byList;
        std::vector<bool> seen(256);
        for (uint32_t code : codes) {
            if (code >= seen.size() || seen[code])
                continue;
            seen[code] = true;
            if (byList.empty() || byList.back().size() == kProofCharactersPerLine)
                byList.emplace_back();
            byList.back().push_back(code);
        }
        lines = std::move(byList);
        return std::nullopt;
    }

    const std::optional<std::u32string> characters = DecodeUtf8(*text);
    if (!characters)
        return "The proof text is not valid UTF-8 !";
    std::map<char32_t, uint32_t> codeOf;
    for (uint32_t code : codes)
        codeOf.emplace(CharacterFor(code, options), code);
    ProofLines fromText(1);
    for (char32_t character : *characters) {
        if (character == U'\n') {
            fromText.emplace_back();
            continue;
        }
        if (character == U'\r') // of a line end written "\r\n"
            continue;
        const auto found = codeOf.find(character);
        if (found == codeOf.end())
            return "Character " + NamedCharacter(character) + " is not among the exported characters !";
        fromText.back().push_back(found->second);
    }
    lines = std::move(fromText);
    return std::nullopt;
}
