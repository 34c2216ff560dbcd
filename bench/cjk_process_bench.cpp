// Whole-process speed of Unicode exports of Chinese (`make bench`): Noto Sans CJK SC at
// 16 px, codes 32-126 and the 3,755 characters of GB2312's level 1 (bench/gb2312_level1.txt),
// 4 bits a pixel with GPOS kerning, beside lv_font_conv converting the same glyphs of the
// face saved alone (it reads no collections); and the 20,992 characters of 0x4E00-0x9FFF
// with --kerning auto. Prints the medians and the ratio the goal is about.
//
// Usage: cjk_process_bench EXPORTER LV_FONT_CONV GB2312_LEVEL1_TXT

#include "process_timing.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

constexpr const char* kCollection = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc";
constexpr int kRuns = 7;

std::string ReadText(const std::string& path)
{
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    std::string characters = text.str();
    while (!characters.empty() && characters.back() == '\n')
        characters.pop_back();
    return characters;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        Fail("cjk_process_bench", "usage: cjk_process_bench EXPORTER LV_FONT_CONV GB2312_LEVEL1_TXT");
    char pattern[] = "/tmp/veltrane-cjk-bench-XXXXXX";
    if (mkdtemp(pattern) == nullptr)
        Fail("cjk_process_bench", "cannot create a temporary directory");
    const fs::path dir = pattern;
    const std::string exporter = argv[1], level1 = argv[3];
    const fs::path face = dir / "NotoSansCJKsc-Regular.otf";
    const std::string save = "/usr/bin/python3 -c \"from fontTools.ttLib import TTCollection; "
                             "TTCollection('" +
                             std::string(kCollection) + "').fonts[2].save('" + face.string() + "')\"";
    if (std::system(save.c_str()) != 0)
        Fail("cjk_process_bench", "cannot save face 2 of the collection with fontTools");
    std::vector<Run> runs = {
        {"veltrane-fontgen-export --format packed --bpp 4 --kerning gpos, 3,850 glyphs",
         {exporter, "--format", "packed", "--bpp", "4", "--kerning", "gpos", "--height", "16", "--face", "2", "--chars",
          "32-126", "--text-file", level1, kCollection, dir / "Gb2312.c"},
         {}},
        {"lv_font_conv 1.5.3 --bpp 4 --format lvgl (kerning included), the same glyphs",
         {argv[2], "--bpp", "4", "--format", "lvgl", "--size", "16", "--font", face, "--range", "32-126", "--symbols",
          ReadText(level1), "-o", dir / "lv_font.c"},
         {}},
    };
    TimeInTurns(runs, kRuns);
    std::vector<Run> large = {
        {"veltrane-fontgen-export --format packed --kerning auto, 0x4E00-0x9FFF (20,992)",
         {exporter, "--format", "packed", "--kerning", "auto", "--height", "16", "--face", "2", "--chars",
          "0x4E00-0x9FFF", kCollection, dir / "Unified.c"},
         {}},
    };
    TimeInTurns(large, 1);

    std::printf("Noto Sans CJK SC 16 px; whole processes (medians)\n");
    for (const std::vector<Run>* group : {&runs, &large})
        for (const Run& run : *group)
            std::printf("  %-84s %9.1f ms\n", run.name.c_str(), Median(run.times));
    std::printf("  GB2312 export / lv_font_conv = %.3f  (goal: at most 0.25)\n",
                Median(runs[0].times) / Median(runs[1].times));
    std::printf("  0x4E00-0x9FFF with --kerning auto: %.1f s  (goal: well under 15 s)\n",
                Median(large[0].times) / 1000);
    fs::remove_all(dir);
    return 0;
}
