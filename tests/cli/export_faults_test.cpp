// veltrane-fontgen-export against what a user's machine can throw at it: broken fonts,
// output places that cannot take the files, a full disk, huge texts. Each fault gives its
// message and exit status 1, never a crash, a hang or a success with a broken file.

#include "cli/program_run.h"
#include "export/export_test_support.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace fs = std::filesystem;

namespace {

const std::string kProgram = VELTRANE_EXPORT_PROGRAM;
const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
const std::string kWriteFailed = "Error writing file !\n";

std::set<std::string> FilesIn(const fs::path& dir)
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir))
        names.insert(entry.path().filename().string());
    return names;
}

bool EndsWith(const std::string& text, const std::string& tail)
{
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

// A whole source ends with its last font record, a whole header with its guard.
bool IsCompleteExport(const fs::path& dir)
{
    return EndsWith(ReadFile(dir / "Font.cpp"), "}\n};\n") && EndsWith(ReadFile(dir / "Font.h"), "\n#endif\n");
}

// Where the table `tag` starts in the TrueType font `data` (its table directory entry).
size_t TableOffset(const std::string& data, const std::string& tag)
{
    auto byte = [&](size_t at) { return static_cast<size_t>(static_cast<uint8_t>(data.at(at))); };
    const size_t tables = byte(4) << 8 | byte(5);
    for (size_t entry = 12; entry < 12 + 16 * tables; entry += 16) {
        if (data.compare(entry, 4, tag) == 0)
            return byte(entry + 8) << 24 | byte(entry + 9) << 16 | byte(entry + 10) << 8 | byte(entry + 11);
    }
    return data.size();
}

struct FontCase {
    const char* what;
    std::function<std::string(const fs::path&)> font; // makes the font file in the directory
    int status;
    std::string err;
    std::set<std::string> files; // what the output directory holds afterwards
};

TEST(ExportFaults, BrokenFontFiles)
{
    const std::string testFont = ReadFile(kTestFont);
    auto write = [](const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    };
    const size_t cmap = TableOffset(testFont, "cmap");
    const size_t glyf = TableOffset(testFont, "glyf");
    ASSERT_LT(cmap, glyf);
    const FontCase cases[] = {
        {"empty file", [&](const fs::path& d) { return write(d / "empty.ttf", ""); }, 1,
         "cannot load font file\n", {}},
        {"directory",
         [](const fs::path& d) {
             fs::create_directory(d / "dir.ttf");
             return (d / "dir.ttf").string();
         },
         1, "cannot load font file\n", {}},
        {"cut in its table directory", [&](const fs::path& d) { return write(d / "cut.ttf", testFont.substr(0, 100)); },
         1, "cannot load font file\n", {}},
        {"cut in its character map",
         [&](const fs::path& d) { return write(d / "cut.ttf", testFont.substr(0, cmap + 10)); }, 1,
         "cannot load font file\n", {}},
        // FreeType reads outlines past the end of the file as empty glyphs: a whole export.
        {"cut in the glyph outlines",
         [&](const fs::path& d) { return write(d / "cut.ttf", testFont.substr(0, glyf + 10)); }, 0, "",
         {"Font.cpp", "Font.h"}},
        // Outlines for 1024 units per em read at 16: glyphs dozens of ems across.
        {"units per em far too small",
         [&](const fs::path& d) {
             std::string bytes = testFont;
             const size_t unitsPerEm = TableOffset(testFont, "head") + 18;
             bytes[unitsPerEm] = 0;
             bytes[unitsPerEm + 1] = 16;
             return write(d / "upem.ttf", bytes);
         },
         1, "cannot render glyph\n", {"Font.cpp"}},
        // The characters before the broken one stay in the source; no header.
        {"a glyph outline FreeType refuses", [](const fs::path& d) { return FontWithBrokenGlyph(kTestFont, d, 'T'); },
         1, "cannot load glyph\n", {"Font.cpp"}},
    };
    for (const FontCase& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        const fs::path out = dir.Path() / "out";
        fs::create_directory(out);
        const ProgramResult run = RunProgram({kProgram, c.font(dir.Path()), (out / "Font.cpp").string()});
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, c.err);
        EXPECT_EQ(FilesIn(out), c.files);
        if (c.status == 0) {
            EXPECT_TRUE(IsCompleteExport(out));
        }
    }
}

struct PlaceCase {
    const char* what;
    std::function<std::string(const fs::path&)> output; // prepares the place, returns OUTPUT
    std::set<std::string> files;                        // what is in the directory afterwards
};

TEST(ExportFaults, OutputPlacesThatCannotTakeTheFiles)
{
    const PlaceCase cases[] = {
        {"directory vanished", [](const fs::path& d) { return (d / "gone/Font.cpp").string(); }, {}},
        {"directory is a regular file",
         [](const fs::path& d) {
             std::ofstream(d / "plain");
             return (d / "plain/Font.cpp").string();
         },
         {"plain"}},
        {"source path is a directory",
         [](const fs::path& d) {
             fs::create_directory(d / "Font.cpp");
             return (d / "Font.cpp").string();
         },
         {"Font.cpp"}},
        // The source is complete; only the header is missing.
        {"header path is a directory",
         [](const fs::path& d) {
             fs::create_directory(d / "Font.h");
             return (d / "Font.cpp").string();
         },
         {"Font.cpp", "Font.h"}},
        {"disk full at the first write",
         [](const fs::path& d) {
             fs::create_symlink("/dev/full", d / "Font.cpp");
             return (d / "Font.cpp").string();
         },
         {"Font.cpp"}},
    };
    for (const PlaceCase& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        const ProgramResult run = RunProgram({kProgram, kTestFont, c.output(dir.Path())});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, kWriteFailed);
        EXPECT_EQ(FilesIn(dir.Path()), c.files);
    }
}

TEST(ExportFaults, ReadOnlyDirectoryByPermissions)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "permission bits do not stop root; the read-only mount case covers this";
    TempDir dir;
    fs::permissions(dir.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    const ProgramResult run = RunProgram({kProgram, kTestFont, (dir.Path() / "Font.cpp").string()});
    fs::permissions(dir.Path(), fs::perms::owner_all);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, kWriteFailed);
    EXPECT_TRUE(fs::is_empty(dir.Path()));
}

// Runs the exporter with OUTPUT in a small file system of its own (a tmpfs of `size`
// bytes, read-only when asked) inside a private mount namespace, so nothing outlives the
// run; what the exporter left there is copied to `keep`. Needs root and mount namespaces.
const char* const kSmallDisk = R"(set -e
size=$1 mode=$2 disk=$3 keep=$4
shift 4
mount -t tmpfs -o size="$size" tmpfs "$disk"
if [ "$mode" = ro ]; then mount -o remount,ro "$disk"; fi
status=0
"$@" || status=$?
cp -a "$disk"/. "$keep"/
exit $status
)";

class SmallDisk
{
public:
    SmallDisk() { fs::create_directory(disk), fs::create_directory(keep); }
    const fs::path& Disk() const { return disk; }
    const fs::path& Kept() const { return keep; }

    ProgramResult Run(size_t size, bool readOnly, std::vector<std::string> command) const
    {
        std::vector<std::string> args = {"unshare", "-m", "sh", "-c", kSmallDisk, "sh", std::to_string(size),
                                         readOnly ? "ro" : "rw", disk.string(), keep.string()};
        args.insert(args.end(), command.begin(), command.end());
        return RunProgram(args);
    }

    static bool Available()
    {
        SmallDisk probe;
        return probe.Run(4096, true, {"true"}).status == 0;
    }

private:
    TempDir dir;
    fs::path disk = dir.Path() / "disk";
    fs::path keep = dir.Path() / "keep";
};

// Sizes of the source and the header the exporter writes with `options` where there is room.
std::pair<size_t, size_t> ExportSizes(const std::vector<std::string>& options)
{
    TempDir dir;
    std::vector<std::string> args = {kProgram};
    args.insert(args.end(), options.begin(), options.end());
    args.push_back((dir.Path() / "Font.cpp").string());
    const ProgramResult run = RunProgram(args);
    EXPECT_EQ(run.status, 0) << run.err;
    return {fs::file_size(dir.Path() / "Font.cpp"), fs::file_size(dir.Path() / "Font.h")};
}

size_t WholePages(size_t bytes)
{
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    return (bytes + page - 1) / page * page;
}

TEST(ExportFaults, FullOrReadOnlyDisk)
{
    if (!SmallDisk::Available())
        GTEST_SKIP() << "needs root and mount namespaces (unshare -m) for a small tmpfs";

    const std::vector<std::string> big = {"--chars", "0-255", kDejaVuSans};
    const std::vector<std::string> small = {"--chars", "65", kTestFont};
    const size_t bigSource = ExportSizes(big).first;
    const auto [smallSource, smallHeader] = ExportSizes(small);
    ASSERT_GT(bigSource, 2u * 262144) << "the source must need several of the writer's buffers";

    struct Case {
        const char* what;
        std::vector<std::string> options;
        size_t size;
        bool readOnly;
        std::set<std::string> files;
    };
    const Case cases[] = {
        {"disk fills up in the middle of the source", big, WholePages(bigSource / 2), false, {"Font.cpp"}},
        {"disk fills up right at the end of the source", big, WholePages(bigSource) - 4096, false, {"Font.cpp"}},
        {"room for the source but not for the header", small, WholePages(smallSource), false,
         {"Font.cpp", "Font.h"}},
        {"read-only file system", small, WholePages(smallSource + smallHeader) * 2, true, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        SmallDisk disk;
        std::vector<std::string> command = {kProgram};
        command.insert(command.end(), c.options.begin(), c.options.end());
        command.push_back((disk.Disk() / "Font.cpp").string());
        const ProgramResult run = disk.Run(c.size, c.readOnly, command);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, kWriteFailed);
        EXPECT_EQ(FilesIn(disk.Kept()), c.files);
        EXPECT_FALSE(fs::exists(disk.Kept() / "Font.h") && !fs::is_empty(disk.Kept() / "Font.h"))
            << "a header after a source that did not fit";
    }

    // The same export with enough room succeeds, so the sizes above were the cause.
    SmallDisk roomy;
    std::vector<std::string> command = {kProgram};
    command.insert(command.end(), small.begin(), small.end());
    command.push_back((roomy.Disk() / "Font.cpp").string());
    const ProgramResult run = roomy.Run(WholePages(smallSource) + WholePages(smallHeader), false, command);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(IsCompleteExport(roomy.Kept()));
}

TEST(ExportFaults, HugeCharacterLists)
{
    std::string allCodesOften; // a million codes, all exportable
    for (int i = 0; i < 3907; ++i)
        allCodesOften += "0-255,";
    struct Case {
        const char* what;
        std::string chars;
        int status;
        std::string err;
    };
    const Case cases[] = {
        {"a million exportable codes", allCodesOften, 0, ""},
        {"a million codes in one range", "0-999999", 1,
         "Character code 256 is above 255 and cannot be exported !\n"},
        {"a range past the cap is dropped", "0-4294967295", 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        const ProgramResult run =
            RunProgram({kProgram, "--chars", c.chars, kTestFont, (dir.Path() / "Font.cpp").string()});
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.err, c.err);
        if (c.status == 0) {
            EXPECT_TRUE(IsCompleteExport(dir.Path()));
        } else {
            EXPECT_TRUE(fs::is_empty(dir.Path()));
        }
    }

    // Each code once, so the million codes give the file of 0-255.
    TempDir once, often;
    RunProgram({kProgram, "--chars", "0-255", kTestFont, (once.Path() / "Font.cpp").string()});
    RunProgram({kProgram, "--chars", allCodesOften, kTestFont, (often.Path() / "Font.cpp").string()});
    EXPECT_TRUE(ReadFile(often.Path() / "Font.cpp") == ReadFile(once.Path() / "Font.cpp"));
}

// One command-line argument may hold at most 128 KiB on Linux; the megabyte texts of the
// height field are tested on the shared reading in export_settings_test.cpp.
TEST(ExportFaults, LongHeightTexts)
{
    const size_t length = 120000;
    struct Case {
        const char* what;
        std::string height;
        int status;
        std::string err;
    };
    const Case cases[] = {
        {"digits", std::string(length, '7'), 1, "Font size must be in between 6 and 256 !\n"},
        {"blanks around a height", std::string(length / 2, ' ') + "16" + std::string(length / 2, '\t'), 0, ""},
        {"leading zeros", std::string(length, '0') + "20", 0, ""},
        {"letters", std::string(length, 'x'), 1, "Invalid font size !\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        const ProgramResult run =
            RunProgram({kProgram, "--height", c.height, "--chars", "65", kTestFont, (dir.Path() / "Font.cpp").string()});
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.err, c.err);
        EXPECT_EQ(FilesIn(dir.Path()).size(), c.status == 0 ? 2u : 0u);
    }
}

} // namespace
