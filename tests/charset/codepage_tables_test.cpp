// The web page's codepage tables (made by make_codepage_tables from `iconv --list`), read
// as the page reads them, against glibc's iconv itself.
#include "charset/codepage_reader.h"
#include "charset/codepage_tables.h"

#include <gtest/gtest.h>

namespace {

// Both readers agree on `name`: what it is and, for an 8-bit encoding, all 256 bytes.
void ExpectSameAsIconv(const std::string& name)
{
    const CodepageRead iconv = ReadCodepageWithIconv(name), tables = ReadCodepageFromTables(name);
    ASSERT_EQ(tables.outcome, iconv.outcome) << name;
    for (size_t byte = 0; byte < 256; ++byte)
        ASSERT_EQ(tables.characters[byte], iconv.characters[byte]) << name << ", byte " << byte;
}

} // namespace

TEST(CodepageTablesTest, EveryListedNameReadsAsIconvReadsIt)
{
    using namespace codepage_tables;
    ASSERT_GT(kNameCount, 1000u) << "iconv --list names over a thousand encodings";
    size_t eightBit = 0;
    for (size_t i = 0; i < kNameCount; ++i) {
        ExpectSameAsIconv(kNames[i].name);
        eightBit += kNames[i].table >= 0;
    }
    EXPECT_GT(eightBit, 500u);
}

// Names as people type them: any case, blanks and punctuation iconv drops, suffixes, the
// codepages the web page once lacked, and names that are not 8-bit or not encodings.
TEST(CodepageTablesTest, TypedNamesReadAsIconvReadsThem)
{
    // clang-format off
    for (const char* name : {
             "cp1251", "Cp 1251", "CP1251//TRANSLIT", "cp1251//translit//ignore", "CP1251/", "CP1251 ",
             "CP1251,IGNORE", "\tcp437", "latin1", "ISO_8859-1:1987", "iso8859-15", "ibm852", "cp737", "cp775",
             "cp852", "cp855", "cp857", "cp860", "cp861", "cp862", "cp863", "cp864", "cp865", "cp869", "cp874",
             "koi8-ru", "macintosh", "tis-620", "KOI8-U", "10646-1:1993/UCS4", "UTF-8", "utf8", "shift_jis",
             "CP9999", "no-such", "", " ", "//", "//TRANSLIT", "caf\xC3\xA9",
         })
        ExpectSameAsIconv(name);
    // clang-format on
}
