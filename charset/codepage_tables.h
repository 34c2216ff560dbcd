#pragma once

#include <cstddef>
#include <cstdint>

// The tables make_codepage_tables writes from glibc's iconv; see ReadCodepageFromTables.
namespace codepage_tables {

struct NamedEncoding
{
    const char* name; // as IconvCodeName gives it, e.g. "CP1251//"
    long table;       // the index of its table in kTables; -1: an encoding that is not 8-bit
};

extern const size_t kTableCount;
// Each byte's character, all of them below U+FFFF in glibc's 8-bit encodings; kNone for none.
inline constexpr uint16_t kNone = 0xFFFF;
extern const uint16_t kTables[][256];
extern const size_t kNameCount;
extern const NamedEncoding kNames[]; // sorted by name, bytewise

} // namespace codepage_tables
