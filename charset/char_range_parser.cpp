#include "charset/char_range_parser.h"

#include "charset/number_text.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace {

// A trimmed number's low 32 bits, which are all a code keeps.
bool ReadCode(std::string_view trimmed, uint32_t& code)
{
    const std::optional<uint64_t> value = ReadNumber(trimmed);
    if (value)
        code = static_cast<uint32_t>(*value);
    return value.has_value();
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
bool AppendPiece(std::string_view piece, CharCodeList& codes)
{
    const size_t dash = piece.find('-');
    if (dash == piece.npos) {
        const std::string_view number = TrimSpace(piece);
        uint32_t code = 0;
        if (number.empty())
            return true;
        if (!ReadCode(number, code))
            return false;
        if (codes.size() < kMaxCharCodes)
            codes.push_back(code);
        return true;
    }
    if (piece.find('-', dash + 1) != piece.npos)
        return false;
    const std::string_view low = TrimSpace(piece.substr(0, dash));
    const std::string_view high = TrimSpace(piece.substr(dash + 1));
    if (low.empty() || high.empty())
        return false;
    uint32_t first = 0;
    uint32_t last = 0;
    const bool firstRead = ReadCode(low, first);
    const bool lastRead = ReadCode(high, last);
    return firstRead && lastRead && AppendRange(first, last, codes);
}

} // namespace

CharCodeList ParseCharCodeText(const std::string& text, std::vector<std::string>* unreadPieces)
{
    // Pieces are views into the text, which may be a megabyte: never copied out as a list.
    CharCodeList codes;
    std::string_view rest = text;
    while (!rest.empty() && codes.size() < kMaxCharCodes) {
        const size_t comma = rest.find(',');
        const std::string_view piece = rest.substr(0, comma);
        if (!AppendPiece(piece, codes) && unreadPieces != nullptr)
            unreadPieces->emplace_back(TrimSpace(piece));
        if (comma == rest.npos)
            break;
        rest.remove_prefix(comma + 1);
    }
    return codes;
}
