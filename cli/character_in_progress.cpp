#include "cli/character_in_progress.h"

#include "charset/codepage.h"

void CharacterInProgress::CharacterStarted(uint32_t code, char32_t character)
{
    current.emplace(code, character);
}

void CharacterInProgress::CharacterWritten(const WrittenCharacter&)
{
    current.reset();
}

std::optional<std::string> CharacterInProgress::Describe(const std::string& fontPath) const
{
    if (!current)
        return std::nullopt;
    return "while rendering code " + std::to_string(current->first) + " (" + CodePoint(current->second) + ") from " +
           fontPath;
}
