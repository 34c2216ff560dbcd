#include "cli/code_list.h"

#include "charset/char_range_parser.h"
#include "export/exportable_codes.h"

#include <algorithm>

namespace {

constexpr const char* kDefaultChars = "32-126";

bool IsSkippedInText(char32_t c)
{
    return c == U'\n' || c == U'\r' || c == U'\t' || c == U'\u2028' || c == U'\u2029';
}

std::optional<std::string> AppendText(const std::string& text, const Codepage& codepage, CharCodeList& codes)
{
    const std::optional<std::u32string> characters = DecodeUtf8(text);
    if (!characters)
        return "The sample text is not valid UTF-8 !";
    CharCodeList fromText;
    for (char32_t character : *characters) {
        if (IsSkippedInText(character))
            continue;
        const std::optional<uint8_t> byte = codepage.ByteOf(character);
        if (!byte)
            return "Character " + NamedCharacter(character) + " is not in " + codepage.Name() + " !";
        if (std::find(fromText.begin(), fromText.end(), *byte) == fromText.end())
            fromText.push_back(*byte);
    }
    codes.insert(codes.end(), fromText.begin(), fromText.end());
    return std::nullopt;
}

} // namespace

std::optional<std::string> ListCodes(const ExportRequest& request, CharCodeList& codes,
                                     std::vector<std::string>& unreadPieces)
{
    const bool textOnly = request.sampleText && !request.charsText;
    codes = textOnly ? CharCodeList{} : ParseCharCodeText(request.charsText.value_or(kDefaultChars), &unreadPieces);
    const Codepage codepage = request.codepage.value_or(Codepage::Latin1());
    if (request.sampleText) {
        if (auto message = AppendText(*request.sampleText, codepage, codes))
            return message;
    }
    if (auto message = FindUnexportableCode(codes))
        return message;
    if (request.codepage) {
        for (uint32_t code : codes) {
            if (!codepage.CharacterOf(static_cast<uint8_t>(code)))
                return "Character code " + std::to_string(code) + " has no character in " + codepage.Name() + " !";
        }
    }
    return std::nullopt;
}
