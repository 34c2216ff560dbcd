// Whole exports through the desktop program's entry. The files and the messages of the
// command-line exporter are tested in tests/cli.

#include "export/export_font.h"
#include "raster/ft_exception.h"

#include "test_support.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

// A glyph FreeType cannot load stops the export there: the source keeps the complete
// sections of the characters before it, and no header is written.
TEST(ExportFontTest, GlyphFailureLeavesTheSectionsBeforeIt)
{
    TempDir dir;
    const std::string broken = FontWithBrokenGlyph(kDejaVuSans, dir.Path(), 66);
    auto exportWith = [&](const std::string& fontPath, std::string name) {
        FTFont font;
        font.LoadFace(fontPath.c_str());
        CharCodeList codes = {65, 67, 66, 68};
        return ExportFont(&font, name, dir.Prefix(), 16, &codes);
    };
    ASSERT_TRUE(exportWith(kDejaVuSans, "intact"));
    EXPECT_THROW(exportWith(broken, "partial"), FTException);
    std::string partial = ReadFile(dir.Path() / "partial.cpp"), intact = ReadFile(dir.Path() / "intact.cpp");
    partial.erase(0, partial.find('\n'));
    intact.erase(0, intact.find('\n'));
    EXPECT_TRUE(partial.ends_with(".pixels = char_67_pixels_270\n};\n\n\n"));
    EXPECT_EQ(intact.substr(0, partial.size()), partial);
    EXPECT_FALSE(fs::exists(dir.Path() / "partial.h"));
}

// Write failures make the export fail; a source that did not reach the disk whole gets no
// header, and a header that cannot be written follows a whole source.
TEST(ExportFontTest, WriteFailures)
{
    for (const char* full : {"f.cpp", "f.h"}) {
        TempDir dir;
        fs::create_symlink("/dev/full", dir.Path() / full);
        FTFont font;
        font.LoadFace(kTestFont.c_str());
        std::string name = "f";
        CharCodeList codes = {65};
        EXPECT_FALSE(ExportFont(&font, name, dir.Prefix(), 16, &codes)) << full;
        if (std::string(full) == "f.cpp")
            EXPECT_FALSE(fs::exists(dir.Path() / "f.h"));
        else
            EXPECT_TRUE(ReadFile(dir.Path() / "f.cpp").ends_with("}\n};\n"));
    }
}

// The rendering choices reach every glyph of the export: 1-bit pixels with mono, where
// the default render of DejaVu Sans at 12 px has grey ones.
TEST(ExportFontTest, RendersEveryGlyphWithTheChosenOptions)
{
    TempDir dir;
    for (const bool mono : {false, true}) {
        FTFont font;
        font.LoadFace(kDejaVuSans.c_str());
        std::string name = "f";
        CharCodeList codes = {65, 103};
        ExportOptions options;
        options.render.mono = mono;
        ASSERT_TRUE(ExportFont(&font, name, dir.Prefix(), 12, &codes, options));
        const std::string source = ReadFile(dir.Path() / "f.cpp");
        bool grey = false;
        for (size_t at = source.find("0x"); at != source.npos; at = source.find("0x", at + 2))
            grey = grey || (source.compare(at, 4, "0x00") != 0 && source.compare(at, 4, "0xFF") != 0);
        EXPECT_EQ(grey, !mono);
    }
}
