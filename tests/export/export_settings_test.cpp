// Rules every front end shares: the height text, the output path, the base name.

#include "export/base_name.h"
#include "export/export_settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

TEST(ExportSettingsTest, FontHeightTexts)
{
    const char* const range = kFontSizeRangeMessage;
    const char* const invalid = kInvalidFontSizeMessage;
    const size_t mega = 1 << 20;
    struct Case
    {
        std::string text;
        unsigned height;     // 0 when the text is refused
        const char* message; // the message when refused
    };
    const Case cases[] = {
        {" 16\t", 16, nullptr},
        {"\n\r\f\v16", 16, nullptr},
        {"+16", 16, nullptr},
        {"0x10", 16, nullptr},
        {"020", 16, nullptr},
        {"4294967312", 16, nullptr}, // low 32 bits
        {"6", 6, nullptr},
        {"256", 256, nullptr},
        {"5", 0, range},
        {"257", 0, range},
        {"", 0, range},
        {"-16", 0, range},
        {"99999999999999999999", 0, range},
        {"16px", 0, invalid},
        {"0x", 0, invalid},
        {"08", 0, invalid},
        // A pasted megabyte is read whole, like any other text.
        {std::string(mega, '9'), 0, range},
        {std::string(mega / 2, ' ') + "16" + std::string(mega / 2, '\n'), 16, nullptr},
        {"16" + std::string(mega, 'x'), 0, invalid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text.substr(0, 12)) + " of " + std::to_string(c.text.size()) + " bytes");
        unsigned height = 12345;
        const std::optional<std::string> error = ParseFontHeight(c.text, height);
        EXPECT_EQ(error, c.message ? std::optional<std::string>(c.message) : std::nullopt);
        EXPECT_EQ(height, c.message ? 12345u : c.height) << "a refused text must leave the height alone";
    }
}

// The path as a save dialog returns it: its directory plus "/" (the current one when it
// has none), its file name less one ".cpp" in any letter case.
TEST(ExportSettingsTest, OutputPaths)
{
    struct Case
    {
        std::string path, directory, baseName;
    };
    const Case cases[] = {
        {"/tmp/out/My Font.CPP", "/tmp/out/", "My Font"},
        {"font.cpp", "./", "font"},
        {"/font.cpp", "/", "font"},
        {"out/Font", "out/", "Font"},
        {"Font.cpp.cpp", "./", "Font.cpp"},
        {"Font.h", "./", "Font.h"},
        {".CpP", "./", ""},
        {"cpp", "./", "cpp"},
        {"Font.cppx", "./", "Font.cppx"},
        {"/tmp/dir.cpp/font", "/tmp/dir.cpp/", "font"},
    };
    for (const Case& c : cases) {
        const OutputLocation location = SplitOutputPath(c.path);
        EXPECT_EQ(location.directory, c.directory) << c.path;
        EXPECT_EQ(location.baseName, c.baseName) << c.path;
    }
}

TEST(ExportSettingsTest, BaseNameKeepsOnlyLettersDigitsAndUnderscore)
{
    const std::pair<std::string, std::string> cases[] = {
        {"My Font-2", "My_Font_2"}, {"Font.h", "Font_h"},     {"caf\xC3\xA9", "caf__"},
        {"", ""},                   {"8x8_ok", "8x8_ok"}, {"a\tb\x7F\xFF", "a_b__"},
    };
    for (auto [name, expected] : cases) {
        SanitizeBaseName(name);
        EXPECT_EQ(name, expected);
    }
}
