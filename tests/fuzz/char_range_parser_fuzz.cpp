// Fuzz target for the characters field parser: compares it with a plain reading of the
// grammar over string lists, simple enough to trust but too slow for megabyte texts.
#include "charset/char_range_parser.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

std::vector<std::string> SplitAt(const std::string& text, char separator)
{
    std::vector<std::string> parts(1);
    for (char c : text)
        c == separator ? parts.emplace_back() : parts.back() += c;
    return parts;
}

// Reads the trimmed piece wholly as strtoul does in base 0; false if it is empty or more.
bool Read(std::string piece, uint32_t& code)
{
    piece.erase(piece.find_last_not_of("\t\n\r\f\v ") + 1);
    piece.erase(0, piece.find_first_not_of("\t\n\r\f\v "));
    char* stop = nullptr;
    code = static_cast<uint32_t>(std::strtoul(piece.c_str(), &stop, 0));
    return !piece.empty() && *stop == '\0';
}

CharCodeList ReferenceParse(const std::string& text)
{
    CharCodeList codes;
    for (const std::string& piece : SplitAt(text, ',')) {
        const std::vector<std::string> ends = SplitAt(piece, '-');
        uint32_t first = 0, last = 0;
        if (ends.size() == 1 && Read(ends[0], first) && codes.size() < kMaxCharCodes)
            codes.push_back(first);
        if (ends.size() != 2 || !Read(ends[0], first) || !Read(ends[1], last) || first > last ||
            uint64_t{last} - first + 1 > kMaxCharCodes)
            continue;
        for (uint64_t code = first; code <= last && codes.size() < kMaxCharCodes; ++code)
            codes.push_back(static_cast<uint32_t>(code));
    }
    return codes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (ParseCharCodeText(text) != ReferenceParse(text)) {
        std::fprintf(stderr, "char_range_parser_fuzz: parser and plain reading of the grammar disagree\n");
        std::abort();
    }
    return 0;
}
