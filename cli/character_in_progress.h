#pragma once

#include "export/export_listener.h"

#include <optional>
#include <string>
#include <vector>

// Follows an export to tell which character a render failure concerns.
class CharacterInProgress : public ExportListener
{
public:
    void CharacterStarted(const ExportCharacter& character) override;
    void CharacterWritten(const WrittenCharacter& written) override;

    // "while rendering code 233 (U+00E9) from FONT" for the character started and not
    // yet written, FONT the path of its font among `fontPaths`; nothing between characters.
    std::optional<std::string> Describe(const std::vector<std::string>& fontPaths) const;

private:
    std::optional<ExportCharacter> current;
};
