#include "cli/font_height_suffix.h"

namespace {

// "FONT#FACE" split at its last "#" when up to five digits, at most 65535, follow it.
void SplitFace(ExtraFont& font)
{
    const size_t hash = font.path.rfind('#');
    if (hash == font.path.npos || hash == 0 || hash + 1 == font.path.size() || font.path.size() - hash > 6)
        return;
    const std::string face = font.path.substr(hash + 1);
    if (face.find_first_not_of("0123456789") != face.npos || std::stol(face) > 65535)
        return;
    font.face = std::stol(face);
    font.path.erase(hash);
}

} // namespace

ExtraFont SplitFontHeight(const std::string& text)
{
    ExtraFont font{text, std::nullopt};
    const size_t at = text.rfind('@');
    if (at != text.npos && at != 0 && at + 1 != text.size()) {
        const std::string height = text.substr(at + 1);
        if (height.find_first_not_of("0123456789abcdefABCDEFxX") == height.npos && height[0] >= '0' && height[0] <= '9')
            font = {text.substr(0, at), height};
    }
    SplitFace(font);
    return font;
}
