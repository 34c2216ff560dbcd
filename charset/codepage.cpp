#include "charset/codepage.h"

#include "charset/codepage_reader.h"

#include <algorithm>
#include <cctype>

std::optional<Codepage> Codepage::Open(const std::string& name, std::string& error)
{
    Codepage codepage;
    codepage.name = name;
    std::transform(name.begin(), name.end(), codepage.name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
#ifdef VELTRANE_CODEPAGE_TABLES
    const CodepageRead read = ReadCodepageFromTables(codepage.name);
#else
    const CodepageRead read = ReadCodepageWithIconv(codepage.name);
#endif
    if (codepage.name.empty() || read.outcome == CodepageRead::Outcome::Unknown) {
        error = "unknown codepage \"" + name + "\": iconv knows no such encoding (try iconv --list)";
        return std::nullopt;
    }
    if (read.outcome == CodepageRead::Outcome::MultiByte) {
        error = "codepage \"" + name + "\" is not an 8-bit encoding";
        return std::nullopt;
    }
    codepage.characters = read.characters;
    return codepage;
}

Codepage Codepage::Latin1()
{
    Codepage codepage;
    codepage.name = "ISO-8859-1";
    for (size_t byte = 0; byte < codepage.characters.size(); ++byte)
        codepage.characters[byte] = static_cast<char32_t>(byte);
    return codepage;
}

std::optional<char32_t> Codepage::CharacterOf(uint8_t byte) const
{
    if (characters[byte] == kUndefined)
        return std::nullopt;
    return characters[byte];
}

std::optional<uint8_t> Codepage::ByteOf(char32_t character) const
{
    const auto found = std::find(characters.begin(), characters.end(), character);
    if (character == kUndefined || found == characters.end())
        return std::nullopt;
    return static_cast<uint8_t>(found - characters.begin());
}
