#include "charset/common_codepages.h"

std::vector<Codepage> CommonCodepages()
{
    static const char* const kNames[] = {
        "CP1252",      "CP1250",      "CP1251",      "CP1253",      "CP1254",      "CP1255",
        "CP1256",      "CP1257",      "CP1258",      "ISO-8859-1",  "ISO-8859-2",  "ISO-8859-3",
        "ISO-8859-4",  "ISO-8859-5",  "ISO-8859-6",  "ISO-8859-7",  "ISO-8859-8",  "ISO-8859-9",
        "ISO-8859-10", "ISO-8859-11", "ISO-8859-13", "ISO-8859-14", "ISO-8859-15", "ISO-8859-16",
        "KOI8-R",      "KOI8-U",      "CP437",       "CP850",       "CP852",       "CP866",
    };
    std::vector<Codepage> codepages;
    for (const char* name : kNames) {
        std::string ignored;
        if (auto codepage = Codepage::Open(name, ignored))
            codepages.push_back(std::move(*codepage));
    }
    return codepages;
}
