// Drawing speed of the packed fonts' runtime (`make bench`): a 40-character text drawn
// with vt_draw_text from DejaVu Sans 16 px packed at 4 bits a pixel, --compress runs (the
// codings kept for speed), beside the same text drawn from the ds export's records with a
// plain loop; both plot into the same frame buffer. Prints the median times and their
// ratio (goal: at most 3). Then the
// time per glyph of that text and of a 20-character Chinese UTF-8 text from Noto Sans CJK
// SC 16 px, packed alike with the 3,850 glyphs of ASCII and GB2312's level 1, in the fonts
// of each --compress choice: none (plain values), runs (run-length codings only) and auto
// (the smallest coding of each glyph, the model's among them). No choice stores every glyph
// in the model coding; auto's Chinese font, where it takes the most, stands for it.
#include <bench_cjk_auto.h>
#include <bench_cjk_none.h>
#include <bench_cjk_runs.h>
#include <bench_ds.h>
#include <bench_packed_auto.h>
#include <bench_packed_none.h>
#include <bench_packed_runs.h>

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
    std::vector<double> ds, packed, ratios;
    for (int turn = 0; turn < 31; ++turn) {
        ds.push_back(Microseconds([&] { sink = sink + DrawDs(font_bench_ds_0, text, 2, 40, plotter); }));
        packed.push_back(Microseconds(
            [&] { sink = sink + vt_draw_text(&font_bench_packed_runs, text, 2, 40, 0, plotter, nullptr); }));
        ratios.push_back(packed.back() / ds.back());
    }
    std::printf("40-character text, DejaVu Sans 16 px: ds records, plain loop %.2f us; "
                "vt_draw_text, 4 bpp --compress runs %.2f us; ratio %.2f (goal <= 3)\n",
                Median(ds), Median(packed), Median(ratios));
    std::printf("per glyph: ds loop, Latin %.3f us\n", Median(ds) / kLatinCharacters);

    // Each text's fonts take turns too; the codings' ratio is the median of each turn's.
    struct Coding
    {
        const char* compress;
        const vt_font_t* latin;
        const vt_font_t* cjk;
        std::vector<double> latinTimes, cjkTimes;
    };
    Coding codings[] = {{"none", &font_bench_packed_none, &font_bench_cjk_none, {}, {}},
                        {"runs", &font_bench_packed_runs, &font_bench_cjk_runs, {}, {}},
                        {"auto", &font_bench_packed_auto, &font_bench_cjk_auto, {}, {}}};
    std::vector<double> latinAutoToRuns, cjkAutoToRuns;
    for (int turn = 0; turn < 31; ++turn) {
        for (Coding& coding : codings) {
            coding.latinTimes.push_back(
                Microseconds([&] { sink = sink + vt_draw_text(coding.latin, text, 2, 40, 0, plotter, nullptr); }));
            coding.cjkTimes.push_back(
                Microseconds([&] { sink = sink + vt_draw_text(coding.cjk, chinese, 2, 40, 0, plotter, nullptr); }));
        }
        latinAutoToRuns.push_back(codings[2].latinTimes.back() / codings[1].latinTimes.back());
        cjkAutoToRuns.push_back(codings[2].cjkTimes.back() / codings[1].cjkTimes.back());
    }
    std::printf("per glyph, vt_draw_text at 4 bpp, by --compress:  ");
    for (const Coding& coding : codings)
        std::printf(" %-10s", coding.compress);
    std::printf("\n  40-character Latin text (us)                    ");
    for (const Coding& coding : codings)
        std::printf(" %-10.3f", Median(coding.latinTimes) / kLatinCharacters);
    std::printf("\n  20-character Chinese UTF-8 text (us)            ");
    for (const Coding& coding : codings)
        std::printf(" %-10.3f", Median(coding.cjkTimes) / kChineseCharacters);
    std::printf("\nauto / runs: Latin %.2f, Chinese %.2f (goal for the model coding, which the Chinese "
                "font's auto stands for: <= 4)%s\n",
                Median(latinAutoToRuns), Median(cjkAutoToRuns),
                font_bench_cjk_auto.model == nullptr ? "; the Chinese font's auto has no glyph of the model coding"
                                                     : "");
    return 0;
}
