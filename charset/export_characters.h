#pragma once

#include "charset/char_code_list.h"
#include "charset/codepage.h"

#include <cstdint>
#include <vector>

// A listed code and the Unicode character an export renders for it.
struct ExportCharacter
{
    uint32_t code;      // what firmware strings hold: a byte, or a Unicode font's code point
    char32_t character; // the code itself, or the character its byte stands for in the codepage
    unsigned font = 0;  // which of the export's fonts gives its glyph: 0 the main font
};

// What an export holds: each listed code once, at its first place in the list, with its
// character. The writers, the kerning, the proof text and the warnings all read this list.
using ExportCharacters = std::vector<ExportCharacter>;

// Every code must be exportable (FindUnexportableCode) and, with a codepage, stand for a
// character in it; null `codepage`: every code is its own character.
ExportCharacters ListExportCharacters(const CharCodeList& codes, const Codepage* codepage);
