// A stand-in for a firmware's text drawing: draws a line of text with a font generated at
// build time and shows the pixels as text art on standard output.
//
//   text_banner [TEXT]     TEXT (default Hello) in the banner font
//   text_banner --greeting a Russian greeting, a CP1251 string, in the greeting font
//   text_banner --turned [TEXT]  TEXT in the banner font's four rotations (turned_banner.cpp)

#include <banner_font.h>   // generated: font_banner_font_0 .. font_banner_font_270
#include <greeting_font.h> // generated: font_greeting_font_0 .. font_greeting_font_270

#include "turned_banner.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

// "Привет, Таня!" in CP1251, as a firmware's string table would hold it.
constexpr const char* kGreeting = "\xCF\xF0\xE8\xE2\xE5\xF2, \xD2\xE0\xED\xFF!";

// The pen adjustment between `previous` and the character `c` stands for.
int KerningAfter(const ds_bitmap_font_char_t& c, char previous)
{
    for (int i = 0; c.kerning_table_prev != nullptr && c.kerning_table_prev[i] != 0; ++i) {
        if (c.kerning_table_prev[i] == previous)
            return c.kerning_table_delta[i];
    }
    return 0;
}

struct Placed
{
    const ds_bitmap_font_char_t* c;
    int x; // left column of its bitmap
};

// Where each character of `text` goes on a line whose pen starts at 0; characters the
// font leaves out are skipped.
std::vector<Placed> Layout(const ds_bitmap_font_t& font, const std::string& text)
{
    std::vector<Placed> placed;
    int pen = 0;
    char previous = 0;
    for (char ch : text) {
        const ds_bitmap_font_char_t* c = font.chars[static_cast<unsigned char>(ch)];
        if (c == nullptr)
            continue;
        if (previous != 0)
            pen += KerningAfter(*c, previous);
        placed.push_back({c, pen + c->xoff});
        pen += c->xadvance;
        previous = ch;
    }
    return placed;
}

char Shade(uint8_t coverage)
{
    return coverage == 0 ? '.' : coverage < 85 ? '-' : coverage < 170 ? '+' : '#';
}

} // namespace

int main(int argc, char** argv)
{
    const std::string argument = argc > 1 ? argv[1] : "Hello";
    if (argument == "--turned") {
        PrintTurnedBanners(argc > 2 ? argv[2] : "Hello");
        return 0;
    }
    const bool greeting = argument == "--greeting";
    const ds_bitmap_font_t& font = greeting ? font_greeting_font_0 : font_banner_font_0;
    const std::vector<Placed> placed = Layout(font, greeting ? kGreeting : argument);
    if (placed.empty())
        return 0;
    int left = placed.front().x, right = left;
    for (const Placed& p : placed) {
        left = std::min(left, p.x);
        right = std::max(right, p.x + static_cast<int>(p.c->w));
    }
    // Rows from the ascender down to the descender; ink beyond them is cut off.
    const int rows = font.ascender - font.descender, width = right - left;
    std::vector<uint8_t> canvas(static_cast<size_t>(rows) * width, 0);
    for (const Placed& p : placed) {
        const int top = font.ascender - p.c->yoff;
        for (int y = 0; p.c->pixels != nullptr && y < static_cast<int>(p.c->h); ++y) {
            const int row = top + y;
            for (int x = 0; row >= 0 && row < rows && x < static_cast<int>(p.c->w); ++x) {
                uint8_t& pixel = canvas[static_cast<size_t>(row) * width + (p.x - left + x)];
                pixel = std::max(pixel, p.c->pixels[y * p.c->w + x]);
            }
        }
    }
    for (int row = 0; row < rows; ++row) {
        std::string line;
        for (int column = 0; column < width; ++column)
            line += Shade(canvas[static_cast<size_t>(row) * width + column]);
        std::puts(line.c_str());
    }
    return 0;
}
