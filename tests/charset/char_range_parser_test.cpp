#include "charset/char_range_parser.h"

#include "test_support.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(CharRangeParser, YieldsCodesInTextOrder)
{
    // clang-format off
    const std::pair<std::string, CharCodeList> cases[] = {
        {"32-126", CodeRange(32, 126)}, {"65,66,65", {65, 66, 65}}, {"70-65", {}}, {"65-65", {65}},
        {" 0x41 - 0x43 ,\t97 ", {65, 66, 67, 97}}, {"010", {8}}, {"0", {0}}, {"08", {}}, {"0x", {}},
        {"+0x41-+0101", {65}}, {"++65", {}}, {"+ 65", {}}, {"-5", {}}, {"5-", {}}, {"1-2-3", {}},
        {",,65,,", {65}}, {" , ", {}}, {"65\n66", {}}, {"32-126\n200", {}}, {"65 66", {}}, {"A", {}},
        {"4294967296", {0}}, {"4294967297-4294967298", {1, 2}}, {"99999999999999999999", {0xFFFFFFFFu}},
        {"\f\v65\r\v", {65}}, {"\xa0" "65", {}},
        // Dropped pieces do not affect their neighbours; a zero byte ends a number.
        {"65,x,66,3-1,67", {65, 66, 67}}, {"65\0zz,66"s, {65, 66}},
        // A range whose last code is the largest 32-bit value stops there instead of wrapping.
        {"4294967294-4294967295", {0xFFFFFFFEu, 0xFFFFFFFFu}},
        // Ranges of more than 0x110000 codes are dropped; the list stops growing at 0x110000.
        {"0-1114112,65", {65}}, {"0-4000000000", {}},
    };
    // clang-format on
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(ParseCharCodeText(text), expected) << testing::PrintToString(text);

    const CharCodeList capped = ParseCharCodeText("1-1114111,0-9,5");
    EXPECT_EQ(capped.size(), kMaxCharCodes);
    EXPECT_EQ(std::vector({capped[kMaxCharCodes - 2], capped.back()}), std::vector<uint32_t>({0x10FFFF, 0}));
}

TEST(CharRangeParser, MegabyteTextsFinish)
{
    std::string ranges;
    while (ranges.size() < (1 << 20))
        ranges += "0-1114111,";
    EXPECT_EQ(ParseCharCodeText(ranges).size(), kMaxCharCodes);
    EXPECT_EQ(ParseCharCodeText(std::string(1 << 20, '9')), CharCodeList{0xFFFFFFFFu});
    EXPECT_TRUE(ParseCharCodeText(std::string(1 << 20, '-')).empty());
}

} // namespace
