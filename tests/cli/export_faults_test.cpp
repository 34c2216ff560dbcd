// veltrane-fontgen-export against what a user's machine can throw at it: broken fonts,
// output places that cannot take the files, a full disk, huge lists. Each fault gives its
// message and exit status 1, never a crash, a hang or a success with a broken file.

#include "cli/program_run.h"
#include "export/export_test_support.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <optional>

namespace fs = std::filesystem;

namespace {

const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
const std::string kWriteFailed = "Error writing file !\n";

// A whole source ends with its last font record, a whole header with its guard.
bool IsCompleteExport(const fs::path& dir)
{
    return ReadFile(dir / "Font.cpp").ends_with("}\n};\n") && ReadFile(dir / "Font.h").ends_with("\n#endif\n");
}

TEST(ExportFaults, BrokenFontFiles)
{
    const std::string font = ReadFile(kTestFont);
    const std::string load = "cannot load font file\n";
    struct Case {
        const char* what;
        std::optional<std::string> bytes; // none: the font path is a directory
        int status;
        std::string err;
    };
    const Case cases[] = {
        {"empty file", "", 1, load},
        {"directory", std::nullopt, 1, load},
        {"cut in its table directory", font.substr(0, 100), 1, load},
        // FreeType reads outlines past the end of the file as empty glyphs: a whole export.
        {"cut in the glyph outlines", font.substr(0, FontTableOffset(font, "glyf") + 10), 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        const fs::path path = dir.Path() / "font.ttf", out = dir.Path() / "out";
        fs::create_directory(out);
        if (c.bytes)
            std::ofstream(path, std::ios::binary) << *c.bytes;
        else
            fs::create_directory(path);
        const ProgramResult run = RunExporter({path.string(), (out / "Font.cpp").string()});
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, c.err);
        EXPECT_TRUE(c.status == 0 ? IsCompleteExport(out) : fs::is_empty(out));
    }
}

TEST(ExportFaults, OutputPlacesThatCannotTakeTheFiles)
{
    TempDir reference;
    ASSERT_EQ(RunExporter({kTestFont, (reference.Path() / "Font.cpp").string()}).status, 0);
    const std::string completeSource = ReadFile(reference.Path() / "Font.cpp");
    struct Case {
        const char* what;
        std::string output; // OUTPUT, in a fresh directory
        std::string made;   // made there first: "NAME/" a directory, "NAME" a file, "NAME@" a link to /dev/full
        std::set<std::string> left;
    };
    const Case cases[] = {
        {"directory vanished", "gone/Font.cpp", "", {}},
        {"directory is a regular file", "plain/Font.cpp", "plain", {"plain"}},
        {"source path is a directory", "Font.cpp", "Font.cpp/", {"Font.cpp"}},
        {"header path is a directory", "Font.cpp", "Font.h/", {"Font.cpp", "Font.h"}},
        {"disk full at the first write", "Font.cpp", "Font.cpp@", {"Font.cpp"}},
        {"disk full at the header", "Font.cpp", "Font.h@", {"Font.cpp", "Font.h"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        if (c.made.ends_with("/"))
            fs::create_directory(dir.Path() / c.made);
        else if (c.made.ends_with("@"))
            fs::create_symlink("/dev/full", dir.Path() / c.made.substr(0, c.made.size() - 1));
        else if (!c.made.empty())
            std::ofstream(dir.Path() / c.made) << "kept";
        const ProgramResult run = RunExporter({kTestFont, (dir.Path() / c.output).string()});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, kWriteFailed);
        EXPECT_EQ(FileNames(dir.Path()), c.left);
        // The header is written after the source, which is whole then.
        if (c.made == "Font.h/" || c.made == "Font.h@") {
            EXPECT_TRUE(ReadFile(dir.Path() / "Font.cpp") == completeSource);
        }
    }
}

TEST(ExportFaults, ReadOnlyDirectoryByPermissions)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "permission bits do not stop root; the read-only mount case covers this";
    TempDir dir;
    fs::permissions(dir.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    const ProgramResult run = RunExporter({kTestFont, (dir.Path() / "Font.cpp").string()});
    fs::permissions(dir.Path(), fs::perms::owner_all);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, kWriteFailed);
    EXPECT_TRUE(fs::is_empty(dir.Path()));
}

// Runs the command that follows with a tmpfs of SIZE bytes of its own on DISK (read-only
// when MODE is "ro") in a private mount namespace, so nothing outlives the run, and copies
// what it left there to KEEP.
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

TEST(ExportFaults, FullOrReadOnlyDisk)
{
    TempDir probe;
    if (RunProgram({"unshare", "-m", "mount", "-t", "tmpfs", "tmpfs", probe.Path().string()}).status != 0)
        GTEST_SKIP() << "needs root and mount namespaces (unshare -m) for a small tmpfs";
    struct Case {
        const char* what;
        size_t size;
        bool readOnly;
        std::set<std::string> left;
    };
    // The source of 0-255 in DejaVu Sans at 16 px takes about 900 KiB.
    const Case cases[] = {
        {"disk fills up in the middle of the source", 384 << 10, false, {"Font.cpp"}},
        {"read-only file system", 4 << 20, true, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir root;
        const fs::path disk = root.Path() / "disk", keep = root.Path() / "keep";
        fs::create_directory(disk);
        fs::create_directory(keep);
        const ProgramResult run =
            RunProgram({"unshare", "-m", "sh", "-c", kSmallDisk, "sh", std::to_string(c.size), c.readOnly ? "ro" : "rw",
                        disk.string(), keep.string(), VELTRANE_EXPORT_PROGRAM, "--chars", "0-255", kDejaVuSans,
                        (disk / "Font.cpp").string()});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, kWriteFailed);
        EXPECT_EQ(FileNames(keep), c.left);
    }
}

TEST(ExportFaults, MillionCodeLists)
{
    // Each code is exported once, so a million exportable codes give the file of 0-255.
    std::string often;
    for (int i = 0; i < 3907; ++i)
        often += "0-255,";
    TempDir once, many, range;
    ASSERT_EQ(RunExporter({"--chars", "0-255", kTestFont, (once.Path() / "Font.cpp").string()}).status, 0);
    const ProgramResult run = RunExporter({"--chars", often, kTestFont, (many.Path() / "Font.cpp").string()});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(ReadFile(many.Path() / "Font.cpp") == ReadFile(once.Path() / "Font.cpp"));

    const ProgramResult wide = RunExporter({"--chars", "0-999999", kTestFont, (range.Path() / "Font.cpp").string()});
    EXPECT_EQ(wide.status, 1);
    EXPECT_EQ(wide.err, "Character code 256 is above 255 and cannot be exported !\n");
    EXPECT_TRUE(fs::is_empty(range.Path()));
}

} // namespace
