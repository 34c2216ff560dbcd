// Whole-process speed of veltrane-fontgen-export (`make bench`):
// - the GPOS export, Roboto Regular at 16 px with --kerning gpos, side by side with the same
//   export with --kerning legacy: codes 32-126 also beside lv_font_conv, the most used
//   peer, converting the same font, size and range, and codes 32-255 (Latin-1, with its
//   accented letters) on their own;
// - a merged export, DejaVu Sans at 16 px, codes 32-126, with five FontAwesome icons, beside
//   the export without the icons and the icons alone.
// The commands take turns, so that the machine's other load weighs on all alike; prints
// the medians and the ratios the goals are about.
//
// Usage: process_bench EXPORTER LV_FONT_CONV

#include "process_timing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr const char* kRoboto = "/usr/share/fonts/truetype/roboto/unhinted/RobotoTTF/Roboto-Regular.ttf";
constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* kFontAwesome = "/usr/share/fonts/truetype/font-awesome/fontawesome-webfont.ttf";
constexpr int kRuns = 25;

// Characters with kerning tables and pairs in all, from the source's delta tables
// ("static const int8_t char_C_ktd[] = {D1, D2, 0};").
std::pair<int, int> KerningIn(const fs::path& source)
{
    std::ifstream in(source);
    int characters = 0, pairs = 0;
    for (std::string line; std::getline(in, line);) {
        if (line.find("_ktd[] = {") == std::string::npos)
            continue;
        ++characters;
        for (size_t at = line.find(", "); at != std::string::npos; at = line.find(", ", at + 1))
            ++pairs;
    }
    return {characters, pairs};
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        Fail("process_bench", "usage: process_bench EXPORTER LV_FONT_CONV");
    char pattern[] = "/tmp/veltrane-kerning-bench-XXXXXX";
    if (mkdtemp(pattern) == nullptr)
        Fail("process_bench", "cannot create a temporary directory");
    const fs::path dir = pattern;
    const std::string exporter = argv[1];
    const std::string size = "16", ascii = "32-126", latin1 = "32-255";
    auto exportRun = [&](const char* kerning, const std::string& range, const std::string& output) {
        return Run{"veltrane-fontgen-export --kerning " + std::string(kerning) + ", codes " + range,
                   {exporter, "--kerning", kerning, "--height", size, "--chars", range, kRoboto, dir / output},
                   {}};
    };
    std::vector<Run> runs = {
        exportRun("gpos", ascii, "Gpos.cpp"), // Roboto Regular
        exportRun("legacy", ascii, "Legacy.cpp"),
        {"lv_font_conv 1.5.3 (--bpp 8 --no-compress --format lvgl), codes " + ascii,
         // lv_font_conv takes a range only after the font it belongs to.
         {argv[2], "--bpp", "8", "--no-compress", "--format", "lvgl", "--size", size, "--font", kRoboto, "--range",
          ascii, "-o", dir / "lv_font.c"},
         {}},
        exportRun("gpos", latin1, "GposLatin1.cpp"),
        exportRun("legacy", latin1, "LegacyLatin1.cpp"),
    };
    const std::string icons = std::string(kFontAwesome) + ":0xF240-0xF244=>0x80";
    runs.push_back({"DejaVu Sans with five icons, codes 32-126",
                    {exporter, "--glyphs", icons, kDejaVuSans, dir / "Merged.cpp"},
                    {}});
    runs.push_back({"DejaVu Sans alone, codes 32-126", {exporter, kDejaVuSans, dir / "Letters.cpp"}, {}});
    runs.push_back(
        {"the five icons alone", {exporter, "--text", "", "--glyphs", icons, kFontAwesome, dir / "Icons.cpp"}, {}});
    TimeInTurns(runs, kRuns);

    std::printf("16 px; whole processes, %d runs each in turn (medians)\n", kRuns);
    for (const Run& run : runs)
        std::printf("  %-72s %9.2f ms\n", run.name.c_str(), Median(run.times));
    for (const char* source : {"Gpos.cpp", "GposLatin1.cpp"}) {
        const auto [characters, pairs] = KerningIn(dir / source);
        std::printf("  (%s: %d kerning pairs for %d characters)\n", source, pairs, characters);
    }
    std::printf("  GPOS export / lv_font_conv, codes 32-126   = %.3f  (goal: at most 0.1)\n",
                Median(runs[0].times) / Median(runs[2].times));
    std::printf("  GPOS export / legacy export, codes 32-126  = %.2f\n", Median(runs[0].times) / Median(runs[1].times));
    std::printf("  GPOS export / legacy export, codes 32-255  = %.2f   (goal: at most 4)\n",
                Median(runs[3].times) / Median(runs[4].times));
    std::printf("  merged / (letters + icons alone)          = %.2f   (goal: at most 1.2)\n",
                Median(runs[5].times) / (Median(runs[6].times) + Median(runs[7].times)));
    fs::remove_all(dir);
    return 0;
}
