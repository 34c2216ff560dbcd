#include "charset/exportable_codes.h"

#include "charset/unicode_text.h"

std::optional<std::string> FindUnexportableCode(const CharCodeList& codes, CodeSpace space)
{
    for (uint32_t code : codes) {
        const std::string named = "Character code " + std::to_string(code);
        if (space == CodeSpace::Bytes && code > 255)
            return named + " is above 255 and cannot be exported !";
        if (space == CodeSpace::Unicode && code > 0x10FFFF)
            return named + " is above U+10FFFF, the last code point, and cannot be exported !";
        if (space == CodeSpace::Unicode && code >= 0xD800 && code <= 0xDFFF)
            return named + " (" + CodePoint(code) + ") is a surrogate, not a character, and cannot be exported !";
    }
    return std::nullopt;
}
