#include "export/base_name.h"
#include "export/exportable_codes.h"

#include <gtest/gtest.h>

TEST(BaseNameTest, OnlyLettersDigitsAndUnderscoreRemain)
{
    const std::pair<std::string, std::string> cases[] = {
        {"My Font-2", "My_Font_2"}, {"Font.h", "Font_h"},   {"caf\xC3\xA9", "caf__"},
        {"", ""},                   {"8x8_ok", "8x8_ok"}, {"a\tb\x7F\xFF", "a_b__"},
    };
    for (auto [name, expected] : cases) {
        SanitizeBaseName(name);
        EXPECT_EQ(name, expected);
    }
}

TEST(ExportableCodesTest, NamesTheFirstCodeAbove255)
{
    EXPECT_EQ(FindUnexportableCode({}), std::nullopt);
    EXPECT_EQ(FindUnexportableCode({0, 65, 255}), std::nullopt);
    EXPECT_EQ(FindUnexportableCode({65, 300, 256, 70000}),
              "Character code 300 is above 255 and cannot be exported !");
    EXPECT_EQ(FindUnexportableCode({4294967295u}),
              "Character code 4294967295 is above 255 and cannot be exported !");
}

TEST(ExportableCodesTest, RepeatsKeepTheirFirstPlace)
{
    EXPECT_EQ(WithoutRepeats({66, 65, 66, 67, 65, 0, 0}), (CharCodeList{66, 65, 67, 0}));
    EXPECT_EQ(WithoutRepeats({300, 65, 300}), (CharCodeList{300, 65}));
}
