#include "cli/glyph_sets.h"

#include "charset/char_range_parser.h"
#include "charset/number_text.h"
#include "cli/export_report.h"
#include "cli/unread_pieces.h"

#include <array>

namespace {

constexpr const char* kInvalidCharsMessage = "Invalid character codes !";
constexpr const char* kByteArrow = "=>";

// Who gives each byte so far, for the message when a second source would give it too.
using Claims = std::array<std::string, 256>;

std::string SetName(const GlyphSetArgument& set)
{
    return "--glyphs " + Quoted(set.asTyped);
}

// The first byte of a set placed by "=>BYTE"; nothing, with the message, when unreadable.
std::optional<std::string> ReadFirstByte(const GlyphSetArgument& set, uint64_t& first,
                                         std::vector<std::string>& context)
{
    const std::optional<uint64_t> value = ReadNumber(TrimSpace(*set.firstByte));
    if (!value) {
        context.push_back(Quoted(kByteArrow + *set.firstByte) + " in " + SetName(set) + " is not a number");
        return kInvalidCharsMessage;
    }
    first = *value;
    return std::nullopt;
}

std::optional<std::string> AddGlyphSet(const GlyphSetArgument& set, unsigned font, const Codepage& codepage,
                                       Claims& claims, ExportCharacters& characters, std::vector<std::string>& context)
{
    std::vector<std::string> unread;
    const CharCodeList listed = ParseCharCodeText(set.list, &unread);
    if (!unread.empty()) {
        context = UnreadPieceLines(unread, "--glyphs");
        return kInvalidCharsMessage;
    }
    uint64_t firstByte = 0;
    if (set.firstByte) {
        if (auto message = ReadFirstByte(set, firstByte, context))
            return message;
    }
    uint64_t nextByte = firstByte;
    ExportCharacters fromSet;
    for (uint32_t character : listed) {
        uint64_t byte = nextByte++;
        if (!set.firstByte) {
            const std::optional<uint8_t> inCodepage = codepage.ByteOf(character);
            if (!inCodepage) {
                context.push_back("give " + SetName(set) + " a byte to start from, e.g. " + set.fontPath + ":" +
                                  set.list + "=>0x80");
                return "Character " + NamedCharacter(character) + " is not in " + codepage.Name() + " !";
            }
            byte = *inCodepage;
        }
        if (byte > 255) {
            context.push_back(SetName(set) + " places " + std::to_string(listed.size()) + " characters from byte " +
                              std::to_string(firstByte) + " on");
            return "Character code " + std::to_string(byte) + " is above 255 and cannot be exported !";
        }
        if (!claims[byte].empty() && claims[byte] != SetName(set)) {
            context.push_back("by " + claims[byte] + " and by " + SetName(set));
            return "Character code " + std::to_string(byte) + " is given twice !";
        }
        if (claims[byte].empty())
            fromSet.push_back({static_cast<uint32_t>(byte), character, font});
        claims[byte] = SetName(set);
    }
    characters.insert(characters.end(), fromSet.begin(), fromSet.end());
    return std::nullopt;
}

} // namespace

std::optional<std::string> AddGlyphSets(const std::vector<GlyphSetArgument>& sets, const Codepage& codepage,
                                        ExportCharacters& characters, std::vector<std::string>& context)
{
    Claims claims;
    for (const ExportCharacter& listed : characters)
        claims[listed.code] = "--chars/--text";
    for (size_t i = 0; i < sets.size(); ++i) {
        if (auto message = AddGlyphSet(sets[i], static_cast<unsigned>(i + 1), codepage, claims, characters, context))
            return message;
    }
    return std::nullopt;
}

std::optional<GlyphSetArgument> SplitGlyphSet(const std::string& text)
{
    const size_t colon = text.rfind(':');
    if (colon == text.npos || colon == 0 || colon + 1 == text.size())
        return std::nullopt;
    GlyphSetArgument set{text, text.substr(0, colon), text.substr(colon + 1), std::nullopt};
    if (const size_t arrow = set.list.find(kByteArrow); arrow != set.list.npos) {
        set.firstByte = set.list.substr(arrow + 2);
        set.list.erase(arrow);
    }
    return set;
}
