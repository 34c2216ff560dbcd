#include "cli/font_height_suffix.h"

ExtraFont SplitFontHeight(const std::string& text)
{
    const size_t at = text.rfind('@');
    if (at == text.npos || at == 0 || at + 1 == text.size())
        return {text, std::nullopt};
    const std::string height = text.substr(at + 1);
    if (height.find_first_not_of("0123456789abcdefABCDEFxX") != height.npos || height[0] < '0' || height[0] > '9')
        return {text, std::nullopt};
    return {text.substr(0, at), height};
}
