#include "charset/char_range_parser.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

// The six characters trimmed around every number.
bool IsTrimmedSpace(char c)
{
    return c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v' || c == ' ';
}

// A run of the text, not owning it: the text may be a megabyte, so pieces are never copied out as a whole list.
struct Span {
    const char* begin;
    const char* end;
    bool empty() const { return begin == end; }
};

Span Trim(Span s)
{
    while (s.end != s.begin && IsTrimmedSpace(s.end[-1]))
        --s.end;
    while (s.begin != s.end && IsTrimmedSpace(*s.begin))
        ++s.begin;
    return s;
}

// Reads a trimmed piece the way strtoul in base 0 does, saturating at the largest 64-bit value.
// `buffer` is reused between pieces because strtoull needs a terminating zero.
bool ReadCode(Span s, std::string& buffer, uint32_t& code)
{
    buffer.assign(s.begin, s.end);
    char* stop = nullptr;
    const unsigned long long value = std::strtoull(buffer.c_str(), &stop, 0);
    if (*stop != '\0')
        return false;
    code = static_cast<uint32_t>(value);
    return true;
}

bool AppendRange(uint32_t first, uint32_t last, CharCodeList& codes)
{
    if (first > last)
        return false;
    // 64-bit counting so that a range ending at 4294967295 stops instead of wrapping to 0.
    const uint64_t count = uint64_t{last} - first + 1;
    if (count > kMaxCharCodes)
        return false;
    const uint64_t room = kMaxCharCodes - codes.size();
    const uint64_t end = uint64_t{first} + std::min(count, room);
    for (uint64_t code = first; code < end; ++code)
        codes.push_back(static_cast<uint32_t>(code));
    return true;
}

// One comma-separated piece: a number, or two numbers joined by a single "-". False when
// the piece asks for something but could not be read; a blank piece asks for nothing.
bool AppendPiece(Span piece, std::string& buffer, CharCodeList& codes)
{
    const char* dash = std::find(piece.begin, piece.end, '-');
    if (dash == piece.end) {
        const Span number = Trim(piece);
        uint32_t code = 0;
        if (number.empty())
            return true;
        if (!ReadCode(number, buffer, code))
            return false;
        if (codes.size() < kMaxCharCodes)
            codes.push_back(code);
        return true;
    }
    if (std::find(dash + 1, piece.end, '-') != piece.end)
        return false;
    const Span low = Trim({piece.begin, dash});
    const Span high = Trim({dash + 1, piece.end});
    if (low.empty() || high.empty())
        return false;
    uint32_t first = 0;
    uint32_t last = 0;
    const bool firstRead = ReadCode(low, buffer, first);
    const bool lastRead = ReadCode(high, buffer, last);
    return firstRead && lastRead && AppendRange(first, last, codes);
}

} // namespace

CharCodeList ParseCharCodeText(const std::string& text, std::vector<std::string>* unreadPieces)
{
    CharCodeList codes;
    std::string buffer;
    const char* pos = text.data();
    const char* const end = pos + text.size();
    while (pos != end && codes.size() < kMaxCharCodes) {
        const char* comma = std::find(pos, end, ',');
        const Span piece{pos, comma};
        if (!AppendPiece(piece, buffer, codes) && unreadPieces != nullptr) {
            const Span trimmed = Trim(piece);
            unreadPieces->emplace_back(trimmed.begin, trimmed.end);
        }
        if (comma == end)
            break;
        pos = comma + 1;
    }
    return codes;
}
