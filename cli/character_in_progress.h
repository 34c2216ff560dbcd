#pragma once

#include "export/export_listener.h"

#include <optional>
#include <string>

// Follows an export to tell which character a render failure concerns.
class CharacterInProgress : public ExportListener
{
public:
    void CharacterStarted(uint32_t code, char32_t character) override;
    void CharacterWritten(const WrittenCharacter& written) override;

    // "while rendering code 233 (U+00E9) from FONT" for the character started and not
    // yet written; nothing between characters.
    std::optional<std::string> Describe(const std::string& fontPath) const;

private:
    std::optional<std::pair<uint32_t, char32_t>> current;
};
