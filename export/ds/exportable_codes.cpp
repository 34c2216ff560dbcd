#include "export/ds/exportable_codes.h"

std::optional<std::string> FindUnexportableCode(const CharCodeList& codes)
{
    for (uint32_t code : codes) {
        if (code > 255)
            return "Character code " + std::to_string(code) + " is above 255 and cannot be exported !";
    }
    return std::nullopt;
}
