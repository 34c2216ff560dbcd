#pragma once

#include "charset/export_characters.h"

#include <optional>
#include <string>
#include <vector>

// The text a proof image shows: lines of exported codes, each drawn as its character.
using ProofLines = std::vector<std::vector<uint32_t>>;

// Default proof text: this many characters to a line.
inline constexpr size_t kProofCharactersPerLine = 16;

// The proof text for an export of `characters`. From `text` (UTF-8, a line feed starts a
// new line; composed to Unicode NFC, or as typed when only that fits) each character
// becomes the first listed code that stands for it; without a text, every listed code, in
// list order, 16 to a line.
// Returns the message for invalid UTF-8 or the first character the export does not hold,
// leaving `lines` alone; nothing otherwise.
std::optional<std::string> ReadProofText(const std::optional<std::string>& text, const ExportCharacters& characters,
                                         ProofLines& lines);
