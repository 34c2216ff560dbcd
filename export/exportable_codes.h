#pragma once

#include "charset/char_code_list.h"

#include <optional>
#include <string>

// The generated font records index their characters by an 8-bit code. Returns the
// message for the first code in list order above 255, which makes the whole list
// unexportable, or nothing when every code fits. Callers show it before writing.
std::optional<std::string> FindUnexportableCode(const CharCodeList& codes);

// The codes in list order with repeats left out (first place kept): each character
// is written once, as the generated identifiers must be unique.
CharCodeList WithoutRepeats(const CharCodeList& codes);
