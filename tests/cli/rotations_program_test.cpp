// --rotations: a subset export is the full export less the other rotations' blocks.

#include "cli/program_run.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// The source's blocks as its writers write them: the include, each kerning table, pixel
// array and character record with the blank lines after it, each font record with the two
// line feeds before it. Paired with the rotation its name ends in, -1 for none.
std::vector<std::pair<std::string, int>> Blocks(const std::string& source)
{
    std::vector<size_t> starts = {0};
    for (const std::string start : {"\nstatic const ", "\n\nconst ds_bitmap_font_t "})
        for (size_t at = source.find(start); at != source.npos; at = source.find(start, at + 1))
            starts.push_back(at + (start[1] == 's'));
    std::sort(starts.begin(), starts.end());
    starts.push_back(source.size());
    std::vector<std::pair<std::string, int>> blocks;
    for (size_t i = 0; i + 1 < starts.size(); ++i) {
        const std::string block = source.substr(starts[i], starts[i + 1] - starts[i]);
        std::string name = block.substr(0, std::min(block.find("[]"), block.find(" = ")));
        name = name.substr(name.rfind('_') + 1);
        const bool numbered = !name.empty() && name.find_first_not_of("0123456789") == name.npos;
        blocks.emplace_back(block, numbered ? std::stoi(name) : -1);
    }
    return blocks;
}

// The width and height in a PNG's header.
std::pair<uint32_t, uint32_t> PngSize(const std::filesystem::path& path)
{
    const std::string png = ReadFile(path);
    const auto u32 = [&png](size_t at) {
        return uint32_t(uint8_t(png.at(at))) << 24 | uint8_t(png.at(at + 1)) << 16 | uint8_t(png.at(at + 2)) << 8 |
               uint8_t(png.at(at + 3));
    };
    return {u32(16), u32(20)};
}

TEST(ExportProgram, RotationsLeaveOutTheOtherRotationsBlocks)
{
    TempDir dir;
    std::filesystem::create_directory(dir.Path() / "sub");
    const auto run = [&dir](const std::string& rotations, const std::string& path) {
        const ProgramResult result =
            RunExporter({"--rotations", rotations, "--chars", "32,65,86,84,46,106,233,66", "--stats", "--proof",
                         dir.Prefix() + path + ".png", kTestFont, dir.Prefix() + path + ".cpp"});
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    };
    // Given in any order, the files hold the rotations in file order.
    run("270,180,0,90", "Font");
    const std::string full = ReadFile(dir.Path() / "Font.cpp"), fullHeader = ReadFile(dir.Path() / "Font.h");
    const struct
    {
        std::string rotations;
        std::vector<int> chosen;
        std::string statsRow;
    } rows[] = {{"0", {0}, " 0\n"}, {"270,90", {90, 270}, " 90,270\n"}, {"180", {180}, " 180\n"}};
    uint32_t widths = 2 * 16, tallest = 0; // the three proofs' panels side by side, 16 px apart
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rotations);
        const std::string stats = run(row.rotations, "sub/Font");
        std::string source, header = fullHeader;
        for (const auto& [block, rotation] : Blocks(full))
            if (rotation < 0 || std::count(row.chosen.begin(), row.chosen.end(), rotation))
                source += block;
        for (int rotation : {0, 90, 180, 270}) {
            const std::string declaration =
                "\nextern const ds_bitmap_font_t font_Font_" + std::to_string(rotation) + ";";
            if (!std::count(row.chosen.begin(), row.chosen.end(), rotation))
                header.erase(header.find(declaration), declaration.size());
        }
        EXPECT_TRUE(ReadFile(dir.Path() / "sub/Font.cpp") == source);
        EXPECT_EQ(ReadFile(dir.Path() / "sub/Font.h"), header);
        EXPECT_NE(stats.find(row.statsRow + "pixel bytes per rotation"), stats.npos) << stats;
        const auto [width, height] = PngSize(dir.Path() / "sub/Font.png");
        widths += width, tallest = std::max(tallest, height);
    }
    // Panels of 0, 90 and 270, and 180 make the full proof's.
    EXPECT_EQ(std::make_pair(widths, tallest), PngSize(dir.Path() / "Font.png"));
}

} // namespace
