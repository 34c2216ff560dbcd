// Drawing speed of the packed fonts' runtime (`make bench`): a 40-character text drawn
// with vt_draw_text from DejaVu Sans 16 px packed at 4 bits a pixel, compressed, beside
// the same text drawn from the ds export's records with a plain loop; both plot into the
// same frame buffer. Prints the median times and their ratio (goal: at most 3). Then a
// 20-character Chinese UTF-8 text from Noto Sans CJK SC 16 px, packed alike with the
// 3,850 glyphs of ASCII and GB2312's level 1: its time per glyph beside the two others'.
#include <bench_cjk.h>
#include <bench_ds.h>
#include <bench_packed.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

constexpr const char* kText = "The quick brown fox jumps over the dog 1";
constexpr const char* kChinese = "我们的设备已经连接到网络，请稍候再试吧。";
constexpr int kChineseCharacters = 20, kLatinCharacters = 40;
constexpr int kRounds = 1000;

uint8_t frame[64][400];

void Plot(void*, int x, int y, uint8_t coverage)
{
    if (x >= 0 && y >= 0 && x < 400 && y < 64)
        frame[y][x] = coverage;
}

// Both draw through the same callback, which the compiler cannot see through, and the
// text is read at run time, so that neither drawing is worked out while compiling.
vt_plot_fn volatile plotter = Plot;
const char* volatile text = kText;
const char* volatile chinese = kChinese;

// As a firmware draws from the ds records: kerning from the tables, every pixel not 0 plotted.
__attribute__((noinline)) int DrawDs(const ds_bitmap_font_t& font, const char* text, int x, int y, vt_plot_fn plot)
{
    int pen = 0;
    char previous = 0;
    for (; *text; ++text) {
        const ds_bitmap_font_char_t* c = font.chars[static_cast<unsigned char>(*text)];
        if (c == nullptr)
            continue;
        for (int i = 0; previous != 0 && c->kerning_table_prev != nullptr && c->kerning_table_prev[i] != 0; ++i)
            if (c->kerning_table_prev[i] == previous)
                pen += c->kerning_table_delta[i];
        for (uint32_t row = 0; c->pixels != nullptr && row < c->h; ++row)
            for (uint32_t column = 0; column < c->w; ++column)
                if (const uint8_t coverage = c->pixels[row * c->w + column])
                    plot(nullptr, x + pen + c->xoff + static_cast<int>(column), y - c->yoff + static_cast<int>(row),
                         coverage);
        pen += c->xadvance;
        previous = *text;
    }
    return pen;
}

// Microseconds of one draw, over kRounds draws.
template <typename Draw>
double Microseconds(Draw draw)
{
    const auto start = std::chrono::steady_clock::now();
    for (int round = 0; round < kRounds; ++round)
        draw();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count() / kRounds;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main()
{
    // The two take turns, so that a machine that speeds up or slows down weighs on both alike;
    // the ratio is the median of each turn's.
    volatile int sink = 0;
    std::vector<double> ds, packed, ratios, cjk;
    for (int turn = 0; turn < 31; ++turn) {
        ds.push_back(Microseconds([&] { sink = sink + DrawDs(font_bench_ds_0, text, 2, 40, plotter); }));
        packed.push_back(
            Microseconds([&] { sink = sink + vt_draw_text(&font_bench_packed, text, 2, 40, 0, plotter, nullptr); }));
        ratios.push_back(packed.back() / ds.back());
        cjk.push_back(
            Microseconds([&] { sink = sink + vt_draw_text(&font_bench_cjk, chinese, 2, 40, 0, plotter, nullptr); }));
    }
    std::printf("40-character text, DejaVu Sans 16 px: ds records, plain loop %.2f us; "
                "vt_draw_text, 4 bpp compressed %.2f us; ratio %.2f (goal <= 3)\n",
                Median(ds), Median(packed), Median(ratios));
    std::printf("per glyph: ds loop, Latin %.3f us; vt_draw_text, Latin %.3f us; "
                "vt_draw_text, 20-character Chinese UTF-8 text %.3f us\n",
                Median(ds) / kLatinCharacters, Median(packed) / kLatinCharacters, Median(cjk) / kChineseCharacters);
    return 0;
}
