#include "charset/export_characters.h"

#include <unordered_set>

ExportCharacters ListExportCharacters(const CharCodeList& codes, const Codepage* codepage)
{
    ExportCharacters characters;
    std::unordered_set<uint32_t> listed;
    for (uint32_t code : codes) {
        if (!listed.insert(code).second)
            continue;
        const char32_t character = codepage ? codepage->CharacterOf(static_cast<uint8_t>(code)).value_or(0) : code;
        characters.push_back({code, character});
    }
    return characters;
}
