// make_codepage_tables: reads the encoding names `iconv --list` prints on standard input
// and writes, on standard output, a C++ source with what glibc's iconv makes of each: the
// character of every byte of each 8-bit encoding (one table for those that agree), and the
// names of the other encodings, which are not 8-bit. ReadCodepageFromTables reads it, so
// that a program built with another iconv (the web page's) reads codepages as glibc does.

#include "charset/codepage_reader.h"
#include "charset/codepage_tables.h"

#include <cstdio>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

int main()
{
    // Names are separated by commas and blanks; each is listed as glibc looks it up.
    std::set<std::string> names;
    std::string name;
    char c;
    while (std::cin.get(c)) {
        if (c == ',' || c == ' ' || c == '\n' || c == '\t') {
            if (!name.empty())
                names.insert(IconvCodeName(name));
            name.clear();
        } else {
            name += c;
        }
    }
    if (!name.empty())
        names.insert(IconvCodeName(name));
    if (names.size() < 100) {
        std::cerr << "make_codepage_tables: only " << names.size() << " encoding names on standard input; "
                  << "give it the output of iconv --list\n";
        return 1;
    }

    std::map<std::array<char32_t, 256>, size_t> tableIndex;
    std::vector<const std::array<char32_t, 256>*> tables;
    std::vector<std::pair<std::string, long>> entries; // name, table or -1: not 8-bit
    for (const std::string& listed : names) {
        const CodepageRead read = ReadCodepageWithIconv(listed);
        if (read.outcome == CodepageRead::Outcome::Unknown)
            continue;
        if (read.outcome == CodepageRead::Outcome::MultiByte) {
            entries.emplace_back(listed, -1);
            continue;
        }
        for (const char32_t character : read.characters) {
            if (character != kNoCharacter && character >= codepage_tables::kNone) {
                std::cerr << "make_codepage_tables: " << listed << " has a character past U+FFFE, which the 16-bit "
                          << "tables cannot hold\n";
                return 1;
            }
        }
        const auto [at, added] = tableIndex.emplace(read.characters, tables.size());
        if (added)
            tables.push_back(&at->first);
        entries.emplace_back(listed, static_cast<long>(at->second));
    }

    std::printf("// Made by make_codepage_tables from glibc's iconv; not to be edited.\n"
                "#include \"charset/codepage_tables.h\"\n\n"
                "namespace codepage_tables {\n\n"
                "const size_t kTableCount = %zu;\n"
                "const uint16_t kTables[][256] = {\n",
                tables.size());
    for (const auto* table : tables) {
        std::printf("    {");
        for (size_t byte = 0; byte < 256; ++byte)
            std::printf("%s0x%X", byte ? "," : "",
                        (*table)[byte] == kNoCharacter ? codepage_tables::kNone
                                                       : static_cast<unsigned>((*table)[byte]));
        std::printf("},\n");
    }
    std::printf("};\n\n"
                "const size_t kNameCount = %zu;\n"
                "const NamedEncoding kNames[] = {\n",
                entries.size());
    for (const auto& [listed, table] : entries)
        std::printf("    {\"%s\", %ld},\n", listed.c_str(), table);
    std::printf("};\n\n} // namespace codepage_tables\n");
    return std::fflush(stdout) == 0 ? 0 : 1;
}
