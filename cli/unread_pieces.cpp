#include "cli/unread_pieces.h"

#include "charset/char_range_parser.h"
#include "charset/number_text.h"
#include "cli/export_report.h"

#include <optional>

namespace {

// `text`, holding no "-" or ",", as the parser reads one number; nothing when it does not
// read as one.
std::optional<uint32_t> ReadNumber(const std::string& text)
{
    std::vector<std::string> unread;
    const CharCodeList codes = ParseCharCodeText(text, &unread);
    if (codes.size() != 1 || !unread.empty())
        return std::nullopt;
    return codes.front();
}

} // namespace

std::string WhyPieceUnread(const std::string& piece, const std::string& option)
{
    const std::string quoted = QuotedShort(piece, 40) + " in " + option + " ";
    const size_t dash = piece.find('-');
    if (dash == piece.npos)
        return quoted + "is not a number";
    if (piece.find('-', dash + 1) != piece.npos)
        return quoted + "has more than one \"-\"";
    const std::string low = piece.substr(0, dash), high = piece.substr(dash + 1);
    if (TrimSpace(low).empty() || TrimSpace(high).empty())
        return quoted + "is a range without its " + (TrimSpace(low).empty() ? "first" : "last") + " code";
    const std::optional<uint32_t> first = ReadNumber(low), last = ReadNumber(high);
    if (!first || !last)
        return quoted + "is not a range of two numbers";
    if (*first > *last)
        return quoted + "runs backwards";
    // Too long a range to list at all.
    return quoted + (option == "--chars" ? "goes above 255" : "names more codes than Unicode has");
}

std::vector<std::string> UnreadPieceLines(const std::vector<std::string>& pieces, const std::string& option)
{
    std::vector<std::string> lines;
    for (size_t i = 0; i < pieces.size() && i < kMaxPieceLines; ++i)
        lines.push_back(WhyPieceUnread(pieces[i], option));
    if (pieces.size() > kMaxPieceLines) {
        const size_t more = pieces.size() - kMaxPieceLines;
        lines.push_back("and " + std::to_string(more) + (more == 1 ? " more piece" : " more pieces") + " of " + option +
                        " that cannot be read");
    }
    return lines;
}
