#include "cli/character_in_progress.h"

#include "charset/codepage.h"

void CharacterInProgress::CharacterStarted(const ExportCharacter& character)
{
    current = character;
}

void CharacterInProgress::CharacterWritten(const WrittenCharacter&)
{
    current.reset();
}

std::optional<std::string> CharacterInProgress::Describe(const std::vector<std::string>& fontPaths) const
{
    if (!current)
        return std::nullopt;
    return "while rendering code " + std::to_string(current->code) + " (" + CodePoint(current->character) + ") from " +
           fontPaths.at(current->font);
}
