#include "export/export_settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

struct HeightCase {
    std::string text;
    std::optional<unsigned> height; // empty when the text is refused
    const char* message;            // the message when refused
};

void PrintTo(const HeightCase& c, std::ostream* os) { *os << testing::PrintToString(c.text); }

class FontHeightTable : public testing::TestWithParam<HeightCase> {};

TEST_P(FontHeightTable, AcceptsOrNamesTheFault)
{
    const HeightCase& c = GetParam();
    unsigned height = 12345;
    const std::optional<std::string> error = ParseFontHeight(c.text, height);
    if (c.height) {
        EXPECT_EQ(error, std::nullopt);
        EXPECT_EQ(height, *c.height);
    } else {
        EXPECT_EQ(error, std::optional<std::string>(c.message));
        EXPECT_EQ(height, 12345u) << "a refused text must leave the height alone";
    }
}

const char* const kRange = kFontSizeRangeMessage;
const char* const kInvalid = kInvalidFontSizeMessage;

INSTANTIATE_TEST_SUITE_P(Texts, FontHeightTable, testing::Values(
    HeightCase{"16", 16u, nullptr},
    HeightCase{" 16 ", 16u, nullptr},
    HeightCase{"16\t", 16u, nullptr},
    HeightCase{"\n\r\f\v16", 16u, nullptr},
    HeightCase{"+16", 16u, nullptr},
    HeightCase{"0x10", 16u, nullptr},
    HeightCase{"020", 16u, nullptr},
    HeightCase{"4294967312", 16u, nullptr},
    HeightCase{"6", 6u, nullptr},
    HeightCase{"256", 256u, nullptr},
    HeightCase{"5", std::nullopt, kRange},
    HeightCase{"257", std::nullopt, kRange},
    HeightCase{"0", std::nullopt, kRange},
    HeightCase{"", std::nullopt, kRange},
    HeightCase{"   ", std::nullopt, kRange},
    HeightCase{"-16", std::nullopt, kRange},
    HeightCase{"99999999999999999999", std::nullopt, kRange},
    HeightCase{"16px", std::nullopt, kInvalid},
    HeightCase{"1 6", std::nullopt, kInvalid},
    HeightCase{"abc", std::nullopt, kInvalid},
    HeightCase{"0x", std::nullopt, kInvalid},
    HeightCase{"08", std::nullopt, kInvalid},
    HeightCase{"+", std::nullopt, kInvalid}
));

// A pasted megabyte is read whole and quickly, like any other text. (Not in the table
// above: its parameters are printed in test listings.)
TEST(FontHeightLongTexts, MegabyteTextsAreReadWhole)
{
    const std::size_t mega = 1 << 20;
    const HeightCase cases[] = {
        {std::string(mega, '9'), std::nullopt, kRange},
        {std::string(mega, '0') + "20", 16u, nullptr},
        {std::string(mega / 2, ' ') + "16" + std::string(mega / 2, '\n'), 16u, nullptr},
        {std::string(mega, ' '), std::nullopt, kRange},
        {"16" + std::string(mega, 'x'), std::nullopt, kInvalid},
        {std::string(mega, '\0'), std::nullopt, kRange}, // a C string: empty
    };
    for (const HeightCase& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 8) + "... of " + std::to_string(c.text.size()) + " bytes");
        unsigned height = 12345;
        const std::optional<std::string> error = ParseFontHeight(c.text, height);
        if (c.height) {
            EXPECT_EQ(error, std::nullopt);
            EXPECT_EQ(height, *c.height);
        } else {
            EXPECT_EQ(error, std::optional<std::string>(c.message));
        }
    }
}

struct BaseNameCase {
    std::string fileName;
    std::string baseName;
};

void PrintTo(const BaseNameCase& c, std::ostream* os) { *os << testing::PrintToString(c.fileName); }

class BaseNameTable : public testing::TestWithParam<BaseNameCase> {};

TEST_P(BaseNameTable, RemovesOneSourceSuffix)
{
    EXPECT_EQ(BaseNameFromFileName(GetParam().fileName), GetParam().baseName);
}

INSTANTIATE_TEST_SUITE_P(Names, BaseNameTable, testing::Values(
    BaseNameCase{"Font.cpp", "Font"},
    BaseNameCase{"Font.CPP", "Font"},
    BaseNameCase{"Font", "Font"},
    BaseNameCase{"Font.cpp.cpp", "Font.cpp"},
    BaseNameCase{"Font.h", "Font.h"},
    BaseNameCase{".cpp", ""},
    BaseNameCase{".CpP", ""},
    BaseNameCase{"cpp", "cpp"},
    BaseNameCase{"Font.cppx", "Font.cppx"},
    BaseNameCase{"", ""}
));

struct PathCase {
    std::string path;
    std::string directory;
    std::string baseName;
};

void PrintTo(const PathCase& c, std::ostream* os) { *os << testing::PrintToString(c.path); }

class OutputPathTable : public testing::TestWithParam<PathCase> {};

TEST_P(OutputPathTable, SplitsIntoDirectoryPrefixAndBaseName)
{
    const OutputLocation location = SplitOutputPath(GetParam().path);
    EXPECT_EQ(location.directory, GetParam().directory);
    EXPECT_EQ(location.baseName, GetParam().baseName);
}

INSTANTIATE_TEST_SUITE_P(Paths, OutputPathTable, testing::Values(
    PathCase{"/tmp/out/My Font.CPP", "/tmp/out/", "My Font"},
    PathCase{"font.cpp", "./", "font"},
    PathCase{"/font.cpp", "/", "font"},
    PathCase{"out/font.h", "out/", "font.h"},
    PathCase{"/tmp/dir.cpp/font", "/tmp/dir.cpp/", "font"}
));

} // namespace
