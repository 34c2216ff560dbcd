#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "charset/char_code_list.h"

// The most codes one range may name and the most the list ever holds: the size of
// the Unicode code space. Keeps a typo such as "0-4000000000" from eating all memory.
inline constexpr std::size_t kMaxCharCodes = 0x110000;

// Turns the characters field's text into the list of codes it names.
//
// The text is a comma-separated list of items; an item is a number or two numbers
// joined by "-" (an inclusive range, added in ascending order). Numbers are read like
// strtoul in base 0 (decimal, "0x" hexadecimal, "0" octal, optional "+"), after trimming
// "\t\n\r\f\v " around them; only the low 32 bits of the value count. Order and
// duplicates are kept. An item that does not read wholly, a range running backwards or
// naming more than kMaxCharCodes codes is dropped; given `unreadPieces`, each dropped
// item is added to it as typed, trimmed (blank items ask for nothing and are not). A range
// ending at 4294967295 stops there. Once the list holds kMaxCharCodes codes it stops
// growing, and the rest of the text is not read. A zero byte ends a number as it ends a
// C string.
CharCodeList ParseCharCodeText(const std::string& text, std::vector<std::string>* unreadPieces = nullptr);
