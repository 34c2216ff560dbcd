// Export speed against its two unavoidable costs: FreeType rendering the glyphs and
// the disk taking the bytes, and what a proof image adds to it (goal at 16 px: at most
// the export's own time). Exports DejaVu Sans, codes 32-126, at 16 and 256 px into a
// temporary directory and prints, per height, the medians of several runs, and the
// exporter's rendering choices against the default render (goal: within 1.2 x).

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "proof/proof_file.h"
#include "raster/ft_font.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr const char* kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Times one run from a quiet disk: writeback still busy with the previous run's file
// would otherwise stall the truncation of that file by a varying amount.
double Seconds(const std::function<void()>& work)
{
    sync();
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

long PeakMemoryKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void Fail(const char* what)
{
    std::fprintf(stderr, "export_bench: %s\n", what);
    std::exit(1);
}

void Measure(FTFont& font, const fs::path& dir, unsigned height, int runs)
{
    CharCodeList codes;
    for (uint32_t code = 32; code <= 126; ++code)
        codes.push_back(code);

    auto exportOnce = [&] {
        std::string name = "bench_font";
        if (!ExportFont(&font, name, dir.string() + "/", height, &codes))
            Fail("export failed");
    };
    auto renderOnce = [&] {
        font.SetPixelSize(height);
        for (uint32_t code : codes) {
            FTGlyph glyph;
            font.RenderGlyph(code, glyph);
        }
    };
    // The same export keeping what it writes, then its proof image with the default text.
    WrittenFont written;
    ProofLines lines;
    ReadProofText(std::nullopt, ListExportCharacters(codes, nullptr), lines);
    auto proofOnce = [&] {
        std::string name = "bench_font";
        FILE* png = std::fopen((dir / "proof.png").c_str(), "wb");
        if (!ExportFont(&font, name, dir.string() + "/", height, &codes, {}, {&written}) || png == nullptr ||
            WriteProofImage(png, written, lines, height) || std::fclose(png) != 0)
            Fail("export with proof failed");
    };
    exportOnce(); // the output size decides the size of the block write
    const size_t bytes = fs::file_size(dir / "bench_font.cpp") + fs::file_size(dir / "bench_font.h");
    std::vector<double> exportTimes, renderTimes, writeTimes, proofTimes;
    for (int i = 0; i < runs; ++i) {
        exportTimes.push_back(Seconds(exportOnce));
        renderTimes.push_back(Seconds(renderOnce));
    }
    // Taken before the write test allocates a buffer of the whole output.
    const long exportPeak = PeakMemoryKiB();

    const std::vector<char> block(bytes, 'x');
    const std::string blockPath = (dir / "block.bin").string();
    auto writeOnce = [&] {
        FILE* file = std::fopen(blockPath.c_str(), "w");
        if (file == nullptr || std::fwrite(block.data(), 1, bytes, file) != bytes || std::fclose(file) != 0)
            Fail("block write failed");
    };
    // Exports, block writes and exports with a proof take turns, so that the other load
    // of the machine weighs on all alike.
    exportTimes.clear();
    for (int i = 0; i < runs; ++i) {
        exportTimes.push_back(Seconds(exportOnce));
        writeTimes.push_back(Seconds(writeOnce));
        proofTimes.push_back(Seconds(proofOnce));
    }
    const double exportTime = Median(exportTimes);
    const double renderTime = Median(renderTimes);
    const double writeTime = Median(writeTimes);
    const double proofCost = Median(proofTimes) - exportTime;

    std::printf("height %u px, codes 32-126, %d runs (medians)\n", height, runs);
    std::printf("  output             %10.2f MB\n", bytes / 1e6);
    std::printf("  export             %10.2f ms  (%.1f MB/s)\n", exportTime * 1e3, bytes / 1e6 / exportTime);
    std::printf("  FreeType render    %10.2f ms\n", renderTime * 1e3);
    std::printf("  one fwrite         %10.2f ms\n", writeTime * 1e3);
    std::printf("  export / (render + write) = %.2f\n", exportTime / (renderTime + writeTime));
    std::printf("  proof image adds   %10.2f ms  (%.2f x the export)\n", proofCost * 1e3, proofCost / exportTime);
    std::printf("  peak memory so far %10ld KiB (ru_maxrss, before the write test)\n", exportPeak);
}

// The export with each rendering choice, runs taking turns with the default one.
void MeasureRenderChoices(FTFont& font, const fs::path& dir, unsigned height, int runs)
{
    CharCodeList codes;
    for (uint32_t code = 32; code <= 126; ++code)
        codes.push_back(code);
    const struct
    {
        const char* name;
        RenderOptions render;
    } choices[] = {
        {"default", {}},
        {"--mono", {Hinting::Native, true}},
        {"--hinting light", {Hinting::Light}},
        {"--hinting auto", {Hinting::Auto}},
        {"--hinting none", {Hinting::None}},
        {"--gamma 2.2", {Hinting::Native, false, 2.2}},
    };
    std::vector<std::vector<double>> times(std::size(choices));
    for (int i = 0; i < runs; ++i)
        for (size_t c = 0; c < std::size(choices); ++c) {
            ExportOptions options;
            options.render = choices[c].render;
            times[c].push_back(Seconds([&] {
                std::string name = "bench_font";
                if (!ExportFont(&font, name, dir.string() + "/", height, &codes, options))
                    Fail("export with a rendering choice failed");
            }));
        }
    std::printf("height %u px, rendering choices, %d runs (medians)\n", height, runs);
    const double base = Median(times[0]);
    for (size_t c = 0; c < std::size(choices); ++c)
        std::printf("  %-18s %10.2f ms  (%.2f x the default)\n", choices[c].name, Median(times[c]) * 1e3,
                    Median(times[c]) / base);
}

} // namespace

int main()
{
    char pattern[] = "/tmp/veltrane-bench-XXXXXX";
    if (mkdtemp(pattern) == nullptr)
        Fail("cannot create a temporary directory");
    const fs::path dir = pattern;

    FTFont font;
    font.LoadFace(kFont);
    std::printf("peak memory at start %8ld KiB\n", PeakMemoryKiB());
    Measure(font, dir, 16, 41);
    Measure(font, dir, 256, 21);
    MeasureRenderChoices(font, dir, 16, 41);
    MeasureRenderChoices(font, dir, 256, 21);
    std::printf("peak memory at end   %8ld KiB\n", PeakMemoryKiB());

    fs::remove_all(dir);
    return 0;
}
