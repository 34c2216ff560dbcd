#pragma once

#include "charset/unicode_text.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

// An 8-bit codepage: the Unicode character each byte 0..255 stands for, as glibc's
// iconv decodes it. Firmware strings in that codepage index the exported font directly.
class Codepage
{
public:
    // The encoding `name` as iconv knows it (letter case ignored). Nothing, with the
    // reason in `error`, for a name iconv does not know or an encoding that is not 8-bit.
    static std::optional<Codepage> Open(const std::string& name, std::string& error);

    // ISO-8859-1, where every byte is the character of the same number.
    static Codepage Latin1();

    // The name as messages give it: upper case.
    const std::string& Name() const { return name; }
    // Nothing for a byte the codepage leaves undefined.
    std::optional<char32_t> CharacterOf(uint8_t byte) const;
    // The lowest byte that stands for `character`; nothing when none does.
    std::optional<uint8_t> ByteOf(char32_t character) const;
    // Whether every byte stands for the same character in both, whatever their names.
    bool SameCharacters(const Codepage& other) const { return characters == other.characters; }

private:
    static constexpr char32_t kUndefined = 0xFFFFFFFF; // kNoCharacter of codepage_reader.h

    std::string name;
    std::array<char32_t, 256> characters{};
};
