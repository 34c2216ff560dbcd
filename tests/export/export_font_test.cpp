#include "export/export_font.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

#include <fstream>

namespace fs = std::filesystem;

namespace {

// Exports with DejaVu Sans at 16 px, where the line metrics are 19, 15 and -4.
bool Export(const std::string& directory, std::string name, CharCodeList codes)
{
    FTFont font;
    font.LoadFace(kDejaVuSans);
    return ExportFont(&font, name, directory, 16, &codes);
}

std::string NullTable(const std::string& rotation)
{
    std::string text = "\n\nconst ds_bitmap_font_t font_f_" + rotation +
                       " = {\n.height = 19,\n.ascender = 15,\n.descender = -4,\n.chars = {\n";
    for (int i = 0; i < 256; ++i)
        text += "nullptr,\n";
    return text + "}\n};\n";
}

std::vector<std::string> FilesIn(const fs::path& dir)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(ExportFontTest, EmptyListGivesEmptyFontRecords)
{
    TempDir dir;
    ASSERT_TRUE(Export(dir.Prefix(), "f", {}));
    EXPECT_EQ(ReadFile(dir.Path() / "f.cpp"),
              "#include <f.h>\n\n" + NullTable("0") + NullTable("90") + NullTable("180") + NullTable("270"));
    EXPECT_EQ(ReadFile(dir.Path() / "f.h").find("#ifndef _FONT_F_H\n"), 0u);
}

TEST(ExportFontTest, SectionsInListOrderTablesInCodeOrder)
{
    TempDir dir;
    ASSERT_TRUE(Export(dir.Prefix(), "f", {66, 32, 65, 1}));
    const std::string text = ReadFile(dir.Path() / "f.cpp");
    const size_t b = text.find("char_66_pixels_0[]"), space = text.find("char_32_0 = "),
                 a = text.find("char_65_pixels_0[]"), missing = text.find("char_1_pixels_0[]");
    EXPECT_TRUE(b < space && space < a && a < missing && missing != std::string::npos);
    // The space has no pixels; its records still exist and the tables point at them.
    EXPECT_EQ(text.find("char_32_pixels"), std::string::npos);
    EXPECT_NE(text.find("char_32_90 = \n{\n.w = 0,\n.h = 0,\n.xoff = 0,\n.yoff = 0,\n.xadvance = 5,\n"
                        ".kerning_table_prev = nullptr,\n.kerning_table_delta = nullptr,\n.pixels = nullptr\n};"),
              std::string::npos);
    // A code the face lacks is exported with the missing-glyph shape under its own code.
    EXPECT_NE(text.find("char_1_0 = \n{\n.w = 9,\n.h = 14,\n"), std::string::npos);
    const size_t table = text.find(".chars = {\n");
    EXPECT_EQ(text.find("&char_1_0,\n", table), table + 11 + 9);
    EXPECT_LT(text.find("&char_32_0,\n", table), text.find("&char_65_0,\n", table));
    EXPECT_LT(text.find("&char_65_0,\n", table), text.find("&char_66_0,\n", table));
}

TEST(ExportFontTest, SanitizedBaseNameNamesFilesAndRecords)
{
    TempDir dir;
    std::string name = "My Font-2";
    FTFont font;
    font.LoadFace(kDejaVuSans);
    CharCodeList codes = {65};
    ASSERT_TRUE(ExportFont(&font, name, dir.Prefix(), 16, &codes));
    EXPECT_EQ(name, "My_Font_2");
    EXPECT_EQ(FilesIn(dir.Path()), (std::vector<std::string>{"My_Font_2.cpp", "My_Font_2.h"}));
    const std::string text = ReadFile(dir.Path() / "My_Font_2.cpp");
    EXPECT_EQ(text.find("#include <My_Font_2.h>\n\n"), 0u);
    EXPECT_NE(text.find("\n\nconst ds_bitmap_font_t font_My_Font_2_270 = {\n"), std::string::npos);

    ASSERT_TRUE(Export(dir.Prefix(), "", {}));
    EXPECT_EQ(ReadFile(dir.Path() / ".cpp").find("#include <.h>\n\n\n\nconst ds_bitmap_font_t font__0 = {"), 0u);
    EXPECT_EQ(ReadFile(dir.Path() / ".h").find("#ifndef _FONT__H\n"), 0u);
}

TEST(ExportFontTest, RepeatedCodesAreWrittenOnceAtTheirFirstPlace)
{
    TempDir once, repeated;
    ASSERT_TRUE(Export(once.Prefix(), "f", {86, 65, 84}));
    ASSERT_TRUE(Export(repeated.Prefix(), "f", {86, 65, 86, 84, 65, 65}));
    EXPECT_EQ(ReadFile(repeated.Path() / "f.cpp"), ReadFile(once.Path() / "f.cpp"));
}

TEST(ExportFontTest, Failures)
{
    const std::string complete = [] {
        TempDir dir;
        Export(dir.Prefix(), "Font", {65, 86});
        return ReadFile(dir.Path() / "Font.cpp");
    }();

    struct Case
    {
        const char* what;
        std::function<std::string(const fs::path&)> prepare; // returns the directory prefix
        CharCodeList codes;
        std::vector<std::string> files;
        std::string source; // expected source text, empty when there is none to check
    };
    const Case cases[] = {
        {"missing directory", [](const fs::path& d) { return (d / "missing/").string(); }, {65, 86}, {}, ""},
        {"directory is a file",
         [](const fs::path& d) {
             std::ofstream(d / "plain");
             return (d / "plain/").string();
         },
         {65, 86},
         {"plain"},
         ""},
        {"header path is a directory",
         [](const fs::path& d) {
             fs::create_directory(d / "Font.h");
             return d.string() + "/";
         },
         {65, 86},
         {"Font.cpp", "Font.h"},
         complete},
        {"source cannot be written",
         [](const fs::path& d) {
             fs::create_symlink("/dev/full", d / "Font.cpp");
             return d.string() + "/";
         },
         {65, 86},
         {"Font.cpp"},
         ""},
        {"header cannot be written",
         [](const fs::path& d) {
             fs::create_symlink("/dev/full", d / "Font.h");
             return d.string() + "/";
         },
         {65, 86},
         {"Font.cpp", "Font.h"},
         complete},
        {"code above 255, existing source kept",
         [](const fs::path& d) {
             std::ofstream(d / "Font.cpp") << "kept";
             return d.string() + "/";
         },
         {65, 256, 86},
         {"Font.cpp"},
         "kept"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir dir;
        const std::string prefix = c.prepare(dir.Path());
        EXPECT_FALSE(Export(prefix, "Font", c.codes));
        EXPECT_EQ(FilesIn(dir.Path()), c.files);
        if (!c.source.empty()) {
            EXPECT_EQ(ReadFile(dir.Path() / "Font.cpp"), c.source);
        }
    }
}

TEST(ExportFontTest, WithoutFaceNothingIsCreated)
{
    TempDir dir;
    FTFont font;
    std::string name = "Font";
    CharCodeList codes = {65};
    try {
        ExportFont(&font, name, dir.Prefix(), 16, &codes);
        FAIL() << "no exception";
    } catch (const FTException& e) {
        EXPECT_STREQ(e.what(), "cannot set char size");
    }
    EXPECT_TRUE(fs::is_empty(dir.Path()));
}

TEST(ExportFontTest, GlyphFailureLeavesTheSectionsBeforeIt)
{
    TempDir dir;
    const std::string broken = FontWithBrokenGlyph(dir.Path(), 66);
    const CharCodeList list = {65, 67, 66, 68};
    ASSERT_TRUE(Export(dir.Prefix(), "intact", list));
    FTFont font;
    font.LoadFace(broken.c_str());
    std::string name = "partial";
    CharCodeList codes = list;
    try {
        ExportFont(&font, name, dir.Prefix(), 16, &codes);
        FAIL() << "no exception";
    } catch (const FTException& e) {
        EXPECT_STREQ(e.what(), "cannot load glyph");
    }
    // Apart from the include line, the partial source is the intact one cut right
    // after the last record of the character before the broken one.
    std::string partial = ReadFile(dir.Path() / "partial.cpp");
    std::string intact = ReadFile(dir.Path() / "intact.cpp");
    partial.erase(0, partial.find('\n'));
    intact.erase(0, intact.find('\n'));
    const std::string lastRecordEnd = ".pixels = char_67_pixels_270\n};\n\n\n";
    ASSERT_GE(partial.size(), lastRecordEnd.size());
    EXPECT_EQ(partial.substr(partial.size() - lastRecordEnd.size()), lastRecordEnd);
    EXPECT_EQ(intact.substr(0, partial.size()), partial);
    EXPECT_FALSE(fs::exists(dir.Path() / "partial.h"));
}
