// Exits 0 when the quoted text's characters, and only they, were exported, the codes of a
// CHARS list are, and the merged font holds its icon, its fallback character and those of
// its strings file.
#include <My_Font_2.h>
#include <merged.h>
#include <quoted.h>

#include <string_view>

int main()
{
    constexpr std::string_view text = "It's $HOME \"\\;";
    for (int code = 0; code < 256; ++code) {
        const bool listed = code != 0 && text.find(static_cast<char>(code)) != std::string_view::npos;
        if ((font_quoted_0.chars[code] != nullptr) != listed)
            return 1;
    }
    const bool merged = font_merged_0.chars[0x80] != nullptr && font_merged_0.chars['B'] != nullptr &&
                        font_merged_0.chars['V'] != nullptr;
    const bool listed = font_My_Font_2_0.chars['A'] != nullptr && font_My_Font_2_180.chars['V'] != nullptr;
    return merged && listed ? 0 : 1;
}
