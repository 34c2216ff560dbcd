#include "turned_banner.h"

#include "draw_text.h"

#include <banner_font.h> // generated: font_banner_font_0 .. font_banner_font_270

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <utility>

namespace {

char Shade(uint8_t coverage)
{
    return coverage == 0 ? '.' : coverage < 85 ? '-' : coverage < 170 ? '+' : '#';
}

// The glyphs' pixels by (x, y), from one rotation's records, the pen starting at (0, 0).
std::map<std::pair<int, int>, uint8_t> Draw(const ds_bitmap_font_t& font, unsigned rotation, const char* text)
{
    std::map<std::pair<int, int>, uint8_t> pixels;
    DrawText(font, rotation, text, 0, 0, [&pixels](int x, int y, uint8_t coverage) {
        uint8_t& pixel = pixels[{y, x}];
        pixel = std::max(pixel, coverage);
    });
    return pixels;
}

void Print(const std::map<std::pair<int, int>, uint8_t>& pixels)
{
    if (pixels.empty())
        return;
    int left = pixels.begin()->first.second, right = left;
    for (const auto& [at, coverage] : pixels)
        left = std::min(left, at.second), right = std::max(right, at.second);
    for (int y = pixels.begin()->first.first; y <= pixels.rbegin()->first.first; ++y) {
        std::string line;
        for (int x = left; x <= right; ++x) {
            const auto pixel = pixels.find({y, x});
            line += Shade(pixel == pixels.end() ? 0 : pixel->second);
        }
        std::puts(line.c_str());
    }
}

} // namespace

void PrintTurnedBanners(const char* text)
{
    const struct
    {
        unsigned rotation;
        const ds_bitmap_font_t& font;
    } turns[] = {
        {0, font_banner_font_0}, {90, font_banner_font_90}, {180, font_banner_font_180}, {270, font_banner_font_270}};
    for (const auto& turn : turns) {
        std::printf("%u:\n", turn.rotation);
        Print(Draw(turn.font, turn.rotation, text));
    }
}
