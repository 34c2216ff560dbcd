#include "charset/unicode_text.h"

#include <utf8proc.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

// Nothing when the bytes are not valid UTF-8.
std::optional<std::u32string> Decode(const utf8proc_uint8_t* text, utf8proc_ssize_t size)
{
    std::u32string characters;
    for (utf8proc_ssize_t at = 0; at < size;) {
        utf8proc_int32_t character = 0;
        const utf8proc_ssize_t length = utf8proc_iterate(text + at, size - at, &character);
        if (length <= 0)
            return std::nullopt;
        characters.push_back(static_cast<char32_t>(character));
        at += length;
    }
    return characters;
}

} // namespace

size_t InvalidUtf8Offset(const std::string& text)
{
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const auto size = static_cast<utf8proc_ssize_t>(text.size());
    utf8proc_ssize_t at = 0;
    while (at < size) {
        utf8proc_int32_t ignored = 0;
        const utf8proc_ssize_t length = utf8proc_iterate(bytes + at, size - at, &ignored);
        if (length <= 0)
            break;
        at += length;
    }
    return static_cast<size_t>(at);
}

std::optional<std::u32string> DecodeUtf8(const std::string& text)
{
    return Decode(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()));
}

std::vector<std::u32string> TextReadings(const std::string& text)
{
    std::optional<std::u32string> typed = DecodeUtf8(text);
    if (!typed)
        return {};
    utf8proc_uint8_t* composed = nullptr;
    const utf8proc_ssize_t size =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                     &composed, static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(composed, &std::free);
    if (size < 0) // out of memory
        return {*typed};
    std::vector<std::u32string> readings = {Decode(composed, size).value_or(*typed)};
    if (readings.front() != *typed)
        readings.push_back(std::move(*typed));
    return readings;
}

std::string EncodeUtf8(char32_t character)
{
    utf8proc_uint8_t bytes[4];
    const utf8proc_ssize_t length =
        character <= 0x10FFFF ? utf8proc_encode_char(static_cast<utf8proc_int32_t>(character), bytes) : 0;
    if (length == 0)
        return "?";
    return std::string(reinterpret_cast<const char*>(bytes), static_cast<size_t>(length));
}

std::string CodePoint(char32_t character)
{
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(character));
    return number;
}

std::string NamedCharacter(char32_t character)
{
    // Beyond Unicode utf8proc answers "not assigned".
    const auto category = utf8proc_category(character <= 0x10FFFF ? static_cast<utf8proc_int32_t>(character) : -1);
    switch (category) {
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_MC:
    case UTF8PROC_CATEGORY_ME:
        return "\"\u25CC" + EncodeUtf8(character) + "\" (" + CodePoint(character) + ")";
    case UTF8PROC_CATEGORY_ZS:
        if (character == U' ')
            break;
        [[fallthrough]];
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_CS:
    case UTF8PROC_CATEGORY_CO:
    case UTF8PROC_CATEGORY_CN:
        return CodePoint(character);
    default:
        break;
    }
    return "\"" + EncodeUtf8(character) + "\" (" + CodePoint(character) + ")";
}
