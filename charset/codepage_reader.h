#pragma once

#include <array>
#include <string>

// How an 8-bit codepage's characters are found: with the C library's iconv, or, where
// that iconv is not glibc's (the web page's), in tables made from glibc's iconv when the
// program is built. Both read a name as glibc's iconv_open does.

// A byte that stands for no character.
inline constexpr char32_t kNoCharacter = 0xFFFFFFFF;

struct CodepageRead
{
    enum class Outcome
    {
        Found,     // `characters` holds each byte's character
        Unknown,   // no encoding of that name
        MultiByte, // an encoding, but one that is not 8-bit
    };
    Outcome outcome = Outcome::Unknown;
    std::array<char32_t, 256> characters{}; // with Found; all 0 otherwise
};

// The name as glibc's iconv_open looks it up: its suffixes ("//TRANSLIT", "/IGNORE", ...)
// and trailing blanks gone, every character other than a letter, digit or one of "_-.,:"
// dropped, letters in upper case, and two "/" at the end, as in "CP1251//". "//" alone
// stands for the locale's own encoding, which no codepage name means.
std::string IconvCodeName(const std::string& name);

// Each byte of the encoding `name` decoded alone by glibc's iconv, or why it cannot be: a
// byte that starts a longer sequence marks a multi-byte encoding; a byte that is no valid
// sequence, or that decodes to other than one character, stands for none.
CodepageRead ReadCodepageWithIconv(const std::string& name);

// The same from the tables made by make_codepage_tables, linked in where they are used.
CodepageRead ReadCodepageFromTables(const std::string& name);
