// Rules every front end shares: the height text, the output path, the base name.
#include "export/desktop/export_settings.h"
#include "export/files/base_name.h"
#include "output_name_cases.h"

#include <gtest/gtest.h>

TEST(ExportSettingsTest, FontHeightTexts)
{
    const char* const range = kFontSizeRangeMessage;
    const char* const invalid = kInvalidFontSizeMessage;
    // clang-format off
    const struct {
        std::string text;
        unsigned height;     // when accepted
        const char* message; // when refused
    } rows[] = {
        {" 16\t", 16, nullptr}, {"\n\r\f\v16", 16, nullptr}, {"+16", 16, nullptr}, {"0x10", 16, nullptr},
        {"020", 16, nullptr}, {"4294967312", 16, nullptr}, {"6", 6, nullptr}, {"256", 256, nullptr},
        {"5", 0, range}, {"257", 0, range}, {"", 0, range}, {"-16", 0, range}, {"99999999999999999999", 0, range},
        {"16px", 0, invalid}, {"0x", 0, invalid}, {"08", 0, invalid}, {"1 6", 0, invalid},
        // A pasted megabyte is read whole, like any other text.
        {std::string(1 << 19, ' ') + "16" + std::string(1 << 19, '\n'), 16, nullptr},
    };
    // clang-format on
    for (const auto& row : rows) {
        unsigned height = 12345;
        const std::optional<std::string> error = ParseFontHeight(row.text, height);
        EXPECT_EQ(error, row.message ? std::optional<std::string>(row.message) : std::nullopt)
            << row.text.substr(0, 12);
        EXPECT_EQ(height, row.message ? 12345u : row.height) << "a refused text leaves the height alone";
    }
}

// The path as a save dialog returns it or OUTPUT names it: its directory plus "/" (the
// current one when it has none), its file name less one ending of the format in any letter
// case, sanitized for identifiers. The command line's runs of the same table are in
// tests/cli.
TEST(ExportSettingsTest, OutputPathsAndBaseNames)
{
    for (const OutputNameCase& row : kOutputNameCases) {
        OutputLocation location = SplitOutputPath(row.path, row.format);
        EXPECT_EQ(location.directory + "|" + location.baseName, row.directory + "|" + row.baseName) << row.path;
        SanitizeBaseName(location.baseName);
        EXPECT_EQ(location.baseName, row.sanitized) << row.path;
    }
}
