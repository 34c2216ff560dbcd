#include "cli/character_in_progress.h"

#include <cstdio>

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
    char character[16];
    std::snprintf(character, sizeof character, "U+%04X", static_cast<unsigned>(current->second));
    return "while rendering code " + std::to_string(current->first) + " (" + character + ") from " + fontPath;
}
