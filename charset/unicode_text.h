#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// UTF-8 texts from the command line and the names messages give their characters.

// Where the first byte that is not valid UTF-8 stands, counted from 0; the text's size
// when it is all valid.
size_t InvalidUtf8Offset(const std::string& text);

// The characters of a UTF-8 text as typed; nothing when the text is not valid UTF-8.
std::optional<std::u32string> DecodeUtf8(const std::string& text);

// The ways to read a UTF-8 text, the preferred first: composed to Unicode NFC, so that a
// letter typed as a base and combining marks (as macOS editors write it) is the one
// character codepages hold; then as typed, when that differs (CP1258 holds some letters
// only as a base and a mark). Empty when the text is not valid UTF-8.
std::vector<std::u32string> TextReadings(const std::string& text);

// One character in UTF-8; "?" for a number beyond Unicode.
std::string EncodeUtf8(char32_t character);

// A character as messages name it, printably: "€" (U+20AC); a combining mark on a dotted
// circle, "◌̆" (U+0306); a control, space other than " " or other character that shows
// nothing by its code point alone.
std::string NamedCharacter(char32_t character);

// Its code point alone: U+20AC.
std::string CodePoint(char32_t character);
