#include "export/font_header.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

TEST(FontHeaderTest, GuardAndDeclarations)
{
    struct Case
    {
        const char* name;
        const char* guard;
    };
    const Case cases[] = {{"my_font", "MY_FONT"}, {"My_Font_2", "MY_FONT_2"}, {"8x8", "8X8"}, {"", ""}};
    TempDir dir;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = dir.Prefix() + c.name + ".h";
        ASSERT_TRUE(WriteFontHeader(path, c.name));
        const std::string n = c.name;
        const std::string g = c.guard;
        EXPECT_EQ(ReadFile(path), "#ifndef _FONT_" + g + "_H\n#define _FONT_" + g + "_H\n\n#include <ds_font.h>\n\n" +
                                      "extern const ds_bitmap_font_t font_" + n + "_0;\n" +
                                      "extern const ds_bitmap_font_t font_" + n + "_90;\n" +
                                      "extern const ds_bitmap_font_t font_" + n + "_180;\n" +
                                      "extern const ds_bitmap_font_t font_" + n + "_270;\n\n#endif\n");
    }
}

TEST(FontHeaderTest, ReplacesAnExistingHeader)
{
    TempDir dir;
    const std::string path = dir.Prefix() + "f.h";
    ASSERT_TRUE(WriteFontHeader(path, "a_much_longer_name_than_the_next"));
    ASSERT_TRUE(WriteFontHeader(path, "f"));
    EXPECT_EQ(ReadFile(path).find("#ifndef _FONT_F_H\n"), 0u);
    EXPECT_EQ(ReadFile(path).find("longer"), std::string::npos);
}

TEST(FontHeaderTest, FailsWhenTheFileCannotBeOpenedOrWritten)
{
    TempDir dir;
    std::filesystem::create_directory(dir.Path() / "X.h");
    EXPECT_FALSE(WriteFontHeader(dir.Prefix() + "X.h", "X"));
    EXPECT_FALSE(WriteFontHeader(dir.Prefix() + "missing/X.h", "X"));
    EXPECT_FALSE(WriteFontHeader("/dev/full", "X"));
}
