#include "charset/codepage_reader.h"

#include <cctype>

namespace {

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

std::string IconvCodeName(const std::string& name)
{
    // Suffixes first, from the end: each starts at the last "/" or "," once the name holds
    // two "/" or more, and blanks and separators at the end go before each.
    std::string code = name;
    while (true) {
        while (!code.empty() && (IsBlank(code.back()) || code.back() == ',' || code.back() == '/'))
            code.pop_back();
        size_t slashes = 0, suffix = std::string::npos;
        for (size_t i = 0; i < code.size(); ++i) {
            if (code[i] == '/')
                ++slashes;
            if (code[i] == '/' || code[i] == ',')
                suffix = i;
        }
        if (slashes <= 1)
            break;
        code.resize(suffix);
    }
    // What is left holds one "/" at most.
    std::string stripped;
    int slashes = 0;
    for (const char c : code) {
        const bool ascii = static_cast<unsigned char>(c) < 0x80;
        if (ascii &&
            (std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-' || c == '.' || c == ',' || c == ':'))
            stripped += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        else if (c == '/')
            stripped += '/', ++slashes;
    }
    for (; slashes < 2; ++slashes)
        stripped += '/';
    return stripped;
}
