// Fuzz target for the characters field parser. Besides the sanitizers' checks it compares
// the parser with a plain reading of the grammar that splits the text into string lists,
// which is simple enough to trust but too slow for megabyte texts.

#include "charset/char_range_parser.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::vector<std::string> SplitAt(const std::string& text, char separator)
{
    std::vector<std::string> parts(1);
    for (char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

std::string Trimmed(std::string s)
{
    const char* blanks = "\t\n\r\f\v ";
    s.erase(s.find_last_not_of(blanks) + 1);
    s.erase(0, s.find_first_not_of(blanks));
    return s;
}

bool Read(const std::string& piece, uint32_t& code)
{
    char* stop = nullptr;
    const unsigned long value = std::strtoul(piece.c_str(), &stop, 0);
    code = static_cast<uint32_t>(value);
    return *stop == '\0';
}

CharCodeList ReferenceParse(const std::string& text)
{
    CharCodeList codes;
    if (text.empty())
        return codes;
    for (const std::string& piece : SplitAt(text, ',')) {
        if (piece.empty())
            continue;
        const std::vector<std::string> ends = SplitAt(piece, '-');
        if (ends.size() == 1) {
            const std::string number = Trimmed(ends[0]);
            uint32_t code = 0;
            if (!number.empty() && Read(number, code) && codes.size() < kMaxCharCodes)
                codes.push_back(code);
        } else if (ends.size() == 2) {
            const std::string low = Trimmed(ends[0]);
            const std::string high = Trimmed(ends[1]);
            uint32_t first = 0;
            uint32_t last = 0;
            if (low.empty() || high.empty() || !Read(low, first) || !Read(high, last) || first > last)
                continue;
            if (uint64_t{last} - first + 1 > kMaxCharCodes)
                continue;
            for (uint64_t code = first; code <= last && codes.size() < kMaxCharCodes; ++code)
                codes.push_back(static_cast<uint32_t>(code));
        }
    }
    return codes;
}

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "char_range_parser_fuzz: %s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const CharCodeList codes = ParseCharCodeText(text);
    if (codes.size() > kMaxCharCodes)
        Fail("list grew past its cap");
    if (codes != ReferenceParse(text))
        Fail("parser and plain reading of the grammar disagree");
    return 0;
}
