#include "cli/code_list.h"

#include "charset/char_range_parser.h"
#include "charset/common_codepages.h"
#include "charset/exportable_codes.h"
#include "charset/unicode_text.h"
#include "cli/export_report.h"
#include "cli/text_file.h"

#include <algorithm>
#include <unordered_set>

namespace {

constexpr const char* kDefaultChars = "32-126";
constexpr const char* kUnicodeHint = "or give --format packed: a packed font without --codepage holds any character";

bool IsSkippedInText(char32_t c)
{
    return c == U'\n' || c == U'\r' || c == U'\t' || c == U'\u2028' || c == U'\u2029';
}

// The bytes of `characters` in `codepage`, each once, in the order of first appearance;
// nothing, with the first character it lacks in `missing`, when it lacks one.
std::optional<CharCodeList> TextCodes(const std::u32string& characters, const Codepage& codepage, char32_t& missing)
{
    CharCodeList codes;
    for (char32_t character : characters) {
        if (IsSkippedInText(character))
            continue;
        const std::optional<uint8_t> byte = codepage.ByteOf(character);
        if (!byte) {
            missing = character;
            return std::nullopt;
        }
        if (std::find(codes.begin(), codes.end(), *byte) == codes.end())
            codes.push_back(*byte);
    }
    return codes;
}

// The bytes of the text's first reading that `codepage` holds whole; nothing, with the
// first character the preferred reading lacks in `missing`, when it holds none.
std::optional<CharCodeList> ReadingCodes(const std::vector<std::u32string>& readings, const Codepage& codepage,
                                         char32_t& missing)
{
    for (const std::u32string& reading : readings) {
        char32_t lacked = 0;
        if (auto codes = TextCodes(reading, codepage, lacked))
            return codes;
        if (&reading == &readings.front())
            missing = lacked;
    }
    return std::nullopt;
}

// Which codepage to give for a text Latin-1 cannot hold.
std::string CodepageSuggestion(const std::vector<std::u32string>& readings)
{
    std::vector<std::string> names;
    for (const Codepage& codepage : CommonCodepages()) {
        char32_t ignored;
        if (ReadingCodes(readings, codepage, ignored))
            names.push_back(codepage.Name());
    }
    if (names.empty())
        return "no common 8-bit codepage holds every character of the text";
    std::string line = "give --codepage " + names.front();
    for (size_t i = 1; i < names.size(); ++i)
        line += (i + 1 == names.size() ? " or " : ", ") + names[i];
    return line;
}

// The characters of a text as themselves, each once, in the order of first appearance:
// a Unicode font's codes.
void AppendCodePoints(const std::u32string& characters, CharCodeList& codes)
{
    std::unordered_set<char32_t> seen;
    for (char32_t character : characters) {
        if (!IsSkippedInText(character) && seen.insert(character).second)
            codes.push_back(character);
    }
}

// The characters of `text`, the sample text's or, given its path, a text file's, as the
// request's codes take them: code points of a Unicode font, else bytes of the codepage.
std::optional<std::string> AppendText(const std::string& text, const std::optional<std::string>& filePath,
                                      const ExportRequest& request, CharCodeList& codes,
                                      std::vector<std::string>& context)
{
    const bool file = filePath.has_value();
    const std::string source = file ? "--text-file " + Quoted(*filePath) : "--text";
    std::vector<std::u32string> readings = TextReadings(text);
    if (readings.empty()) {
        context.push_back(source + " is not valid UTF-8 at byte " + std::to_string(InvalidUtf8Offset(text) + 1));
        return file ? "A text file is not valid UTF-8 !" : "The sample text is not valid UTF-8 !";
    }
    // Editors on Windows start a UTF-8 file with a byte order mark.
    for (std::u32string& reading : readings)
        if (file && reading.starts_with(U'\uFEFF'))
            reading.erase(0, 1);
    if (request.UnicodeCodes()) {
        AppendCodePoints(readings.front(), codes);
        return std::nullopt;
    }
    const Codepage codepage = request.codepage.value_or(Codepage::Latin1());
    char32_t missing = 0;
    std::optional<CharCodeList> fromText = ReadingCodes(readings, codepage, missing);
    if (!fromText) {
        if (!request.codepage) {
            context.push_back(CodepageSuggestion(readings));
            context.push_back(kUnicodeHint);
        }
        return "Character " + NamedCharacter(missing) + " is not in " + codepage.Name() + " !";
    }
    codes.insert(codes.end(), fromText->begin(), fromText->end());
    return std::nullopt;
}

// A text file's bytes; nothing, with the reason in `context`, when it cannot be read.
std::optional<std::string> ReadTextFile(const std::string& path, std::vector<std::string>& context)
{
    std::string text, why;
    if (!ReadWholeFile(path, text, why)) {
        context.push_back("--text-file " + Quoted(path) + ": " + why);
        return std::nullopt;
    }
    return text;
}

} // namespace

std::optional<std::string> ListCodes(const ExportRequest& request, CharCodeList& codes,
                                     std::vector<std::string>& unreadPieces, std::vector<std::string>& context)
{
    const bool textOnly = request.HasTexts() && !request.charsText;
    codes = textOnly ? CharCodeList{} : ParseCharCodeText(request.charsText.value_or(kDefaultChars), &unreadPieces);
    if (request.sampleText) {
        if (auto message = AppendText(*request.sampleText, std::nullopt, request, codes, context))
            return message;
    }
    for (const std::string& path : request.textFiles) {
        const std::optional<std::string> text = ReadTextFile(path, context);
        if (!text)
            return "Cannot read a text file !";
        if (auto message = AppendText(*text, path, request, codes, context))
            return message;
    }
    if (auto message = FindUnexportableCode(codes, request.UnicodeCodes() ? CodeSpace::Unicode : CodeSpace::Bytes))
        return message;
    if (request.codepage) {
        for (uint32_t code : codes) {
            if (!request.codepage->CharacterOf(static_cast<uint8_t>(code)))
                return "Character code " + std::to_string(code) + " has no character in " + request.codepage->Name() +
                       " !";
        }
    }
    return std::nullopt;
}
