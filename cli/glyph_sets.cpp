#include "cli/glyph_sets.h"

#include "charset/char_range_parser.h"
#include "charset/number_text.h"
#include "cli/export_report.h"
#include "cli/unread_pieces.h"

#include "charset/exportable_codes.h"

#include <set>
#include <unordered_map>

namespace {

constexpr const char* kInvalidCharsMessage = "Invalid character codes !";
constexpr const char* kByteArrow = "=>";

// Who gives each code so far, for the message when a second source would give it too.
using Claims = std::unordered_map<uint32_t, std::string>;

std::string SetName(const GlyphSetArgument& set)
{
    return "--glyphs " + Quoted(set.asTyped);
}

// FONT[@PX] as typed, for a message's example.
std::string FontAsTyped(const GlyphSetArgument& set)
{
    return set.asTyped.substr(0, set.asTyped.rfind(':'));
}

// The first byte of a set placed by "=>BYTE"; nothing, with the message, when unreadable.
// A blank BYTE would read as 0, and byte 0 ends a C string, so no firmware string could
// ever draw the glyphs placed there.
std::optional<std::string> ReadFirstByte(const GlyphSetArgument& set, uint64_t& first,
                                         std::vector<std::string>& context)
{
    const std::string_view typed = TrimSpace(*set.firstByte);
    const std::optional<uint64_t> value = ReadNumber(typed);
    const std::string piece = Quoted(kByteArrow + *set.firstByte) + " in " + SetName(set);
    if (typed.empty())
        context.push_back(piece + " has no byte after \"=>\", e.g. =>0x80");
    else if (!value)
        context.push_back(piece + " is not a number");
    else if (*value == 0)
        context.push_back(piece + " places a glyph under byte 0, which ends a C string; start from 1 or above");
    else {
        first = *value;
        return std::nullopt;
    }
    return kInvalidCharsMessage;
}

// A piece such as "0x2600=" is what the shell leaves of an unquoted "0x2600=>0x80": it
// takes ">0x80" as a redirection into a file of that name.
void AddQuotingHint(const GlyphSetArgument& set, const std::vector<std::string>& unread,
                    std::vector<std::string>& context)
{
    for (const std::string& piece : unread) {
        if (piece.ends_with('=')) {
            context.push_back("quote the whole argument, e.g. --glyphs '" + FontAsTyped(set) + ":" + set.list +
                              ">0x80': unquoted, the shell takes \">\" as a redirection");
            return;
        }
    }
}

// A LIST that names nothing, or a character twice (placed by "=>BYTE", it would take two bytes).
std::optional<std::string> CheckListed(const GlyphSetArgument& set, const CharCodeList& listed,
                                       std::vector<std::string>& context)
{
    if (listed.empty()) {
        context.push_back(SetName(set) + " names no characters before \"=>\" or after \":\"");
        return kInvalidCharsMessage;
    }
    std::set<uint32_t> seen;
    for (uint32_t character : listed) {
        if (!seen.insert(character).second) {
            context.push_back(NamedCharacter(character) + " is listed twice in " + SetName(set));
            return kInvalidCharsMessage;
        }
    }
    return std::nullopt;
}

std::optional<std::string> AddGlyphSet(const GlyphSetArgument& set, unsigned font, const Codepage* codepage,
                                       Claims& claims, ExportCharacters& characters, std::vector<std::string>& context)
{
    std::vector<std::string> unread;
    const CharCodeList listed = ParseCharCodeText(set.list, &unread);
    if (!unread.empty()) {
        context = UnreadPieceLines(unread, "--glyphs");
        AddQuotingHint(set, unread, context);
        return kInvalidCharsMessage;
    }
    if (auto message = CheckListed(set, listed, context))
        return message;
    uint64_t firstByte = 0;
    if (set.firstByte) {
        if (auto message = ReadFirstByte(set, firstByte, context))
            return message;
    }
    uint64_t nextByte = firstByte;
    ExportCharacters fromSet;
    const CodeSpace space = codepage ? CodeSpace::Bytes : CodeSpace::Unicode;
    if (auto message = FindUnexportableCode(listed, CodeSpace::Unicode)) {
        context.push_back("in " + SetName(set));
        return message;
    }
    for (uint32_t character : listed) {
        uint64_t byte = nextByte++;
        if (!set.firstByte && !codepage) {
            byte = character;
        } else if (!set.firstByte) {
            const std::optional<uint8_t> inCodepage = codepage->ByteOf(character);
            if (!inCodepage) {
                context.push_back("give " + SetName(set) + " a byte to start from, e.g. " + FontAsTyped(set) + ":" +
                                  set.list + "=>0x80");
                return "Character " + NamedCharacter(character) + " is not in " + codepage->Name() + " !";
            }
            byte = *inCodepage;
        }
        if (byte == 0) {
            context.push_back(SetName(set) + " places " + NamedCharacter(character) +
                              " under byte 0, which ends a C string; give it a byte from 1 on with =>BYTE");
            return kInvalidCharsMessage;
        }
        if (auto message = FindUnexportableCode({static_cast<uint32_t>(std::min<uint64_t>(byte, UINT32_MAX))}, space)) {
            context.push_back(SetName(set) + " places " + std::to_string(listed.size()) +
                              (space == CodeSpace::Bytes ? " characters from byte " : " characters from code ") +
                              std::to_string(firstByte) + " on");
            return message;
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

std::optional<std::string> AddGlyphSets(const std::vector<GlyphSetArgument>& sets, const Codepage* codepage,
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
    GlyphSetArgument set{text, SplitFontHeight(text.substr(0, colon)), text.substr(colon + 1), std::nullopt};
    if (const size_t arrow = set.list.find(kByteArrow); arrow != set.list.npos) {
        set.firstByte = set.list.substr(arrow + 2);
        set.list.erase(arrow);
    }
    return set;
}
