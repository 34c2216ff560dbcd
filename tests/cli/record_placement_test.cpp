// The drawing of the README's "Drawing the four rotations" (examples/text-banner/draw_text.h)
// against the committed exports: every glyph drawn in a rotation from that rotation's own
// turned array lands on the pixels of the upright glyph turned, (x, y) -> (y, -x - 1) at 90,
// (-x - 1, -y - 1) at 180 and (-y - 1, x) at 270, the pen starting at the origin.

#include <cp1251_font.h>
#include <draw_text.h>
#include <golden_font.h>
#include <merged_font.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

namespace {

using Pixels = std::map<std::pair<int, int>, uint8_t>;

Pixels Drawn(const ds_bitmap_font_t& font, unsigned rotation, const std::string& text)
{
    Pixels pixels;
    DrawText(font, rotation, text.c_str(), 0, 0, [&pixels](int x, int y, uint8_t coverage) {
        uint8_t& pixel = pixels[{x, y}];
        pixel = std::max(pixel, coverage);
    });
    return pixels;
}

// The upright drawing turned as a display turned by `rotation` shows it.
Pixels Turned(const Pixels& upright, unsigned rotation)
{
    Pixels turned;
    for (const auto& [at, coverage] : upright) {
        const auto [x, y] = at;
        const std::pair<int, int> to = rotation == 90    ? std::pair(y, -x - 1)
                                       : rotation == 180 ? std::pair(-x - 1, -y - 1)
                                                         : std::pair(-y - 1, x);
        turned[to] = coverage;
    }
    return turned;
}

TEST(RecordPlacement, TurnedArraysDrawTheUprightGlyphTurned)
{
    const struct
    {
        const char* name;
        const ds_bitmap_font_t* fonts[4]; // 0, 90, 180, 270
    } exports[] = {
        {"golden_font", {&font_golden_font_0, &font_golden_font_90, &font_golden_font_180, &font_golden_font_270}},
        {"merged_font", {&font_merged_font_0, &font_merged_font_90, &font_merged_font_180, &font_merged_font_270}},
        {"cp1251_font", {&font_cp1251_font_0, &font_cp1251_font_90, &font_cp1251_font_180, &font_cp1251_font_270}},
    };
    for (const auto& font : exports) {
        // Each glyph alone, then all of them in a line, kerned and advanced along the text.
        std::vector<std::string> texts = {""};
        for (int code = 1; code < 256; ++code) {
            if (font.fonts[0]->chars[code] != nullptr) {
                texts.push_back(std::string(1, static_cast<char>(code)));
                texts.front() += static_cast<char>(code);
            }
        }
        ASSERT_GT(texts.size(), 2u) << font.name;
        for (const std::string& text : texts) {
            const Pixels upright = Drawn(*font.fonts[0], 0, text);
            for (unsigned turn = 1; turn < 4; ++turn)
                EXPECT_EQ(Drawn(*font.fonts[turn], turn * 90, text), Turned(upright, turn * 90))
                    << font.name << " at " << turn * 90 << ": \"" << text << "\"";
        }
    }
}

} // namespace
