#include "charset/export_characters.h"

#include <array>

ExportCharacters ListExportCharacters(const CharCodeList& codes, const Codepage* codepage)
{
    ExportCharacters characters;
    std::array<bool, 256> listed{};
    for (uint32_t code : codes) {
        if (listed[code])
            continue;
        listed[code] = true;
        const char32_t character = codepage ? codepage->CharacterOf(static_cast<uint8_t>(code)).value_or(0) : code;
        characters.push_back({code, character});
    }
    return characters;
}
