// Exits 0 when the quoted text's characters, and only they, were exported, the codes of a
// CHARS list are, the merged font holds its icon, its fallback character and those of its
// strings file, and each packed font's pixels are coded as its COMPRESS says.
#include <My_Font_2.h>
#include <merged.h>
#include <plain.h>
#include <quoted.h>
#include <runs.h>

#include <string_view>

namespace {

// Whether any glyph of the font is stored other than plainly.
bool Coded(const vt_font_t& font)
{
    return font.field_bits[VT_FIELD_CODING] != 0 || font.field_min[VT_FIELD_CODING] != 0;
}

} // namespace

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
    const bool packed = !Coded(font_plain) && Coded(font_runs) && font_runs.model == nullptr;
    return merged && listed && packed ? 0 : 1;
}
