#include "charset/number_text.h"

#include <cstdlib>
#include <string>

std::string_view TrimSpace(std::string_view text)
{
    constexpr std::string_view kSpace = "\t\n\r\f\v ";
    const size_t last = text.find_last_not_of(kSpace);
    if (last == text.npos)
        return {};
    const size_t first = text.find_first_not_of(kSpace);
    return text.substr(first, last - first + 1);
}

std::optional<uint64_t> ReadNumber(std::string_view trimmed)
{
    const std::string terminated(trimmed); // strtoull reads up to a zero byte
    char* stop = nullptr;
    const unsigned long long value = std::strtoull(terminated.c_str(), &stop, 0);
    if (*stop != '\0')
        return std::nullopt;
    return value;
}
