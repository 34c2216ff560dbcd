#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Numbers as the height and characters fields take them.

// `text` without the whitespace "\t\n\r\f\v " at either end.
std::string_view TrimSpace(std::string_view text);

// A whole trimmed number as strtoull reads it in base 0: decimal, "0x" hexadecimal, "0"
// octal, an optional sign, saturating at the largest 64-bit value; an empty text reads as
// 0, and a zero byte ends the number as it ends a C string. Nothing when the reading stops
// before the end.
std::optional<uint64_t> ReadNumber(std::string_view trimmed);
