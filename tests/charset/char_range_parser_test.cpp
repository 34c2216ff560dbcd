#include "charset/char_range_parser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace std::string_literals;

CharCodeList Ascending(uint32_t first, uint32_t last)
{
    CharCodeList codes(last - first + 1);
    std::iota(codes.begin(), codes.end(), first);
    return codes;
}

TEST(CharRangeParser, YieldsCodesInTextOrder)
{
    const std::pair<std::string, CharCodeList> cases[] = {
        {"32-126", Ascending(32, 126)}, {"65,66,65", {65, 66, 65}}, {"70-65", {}}, {"65-65", {65}},
        {" 0x41 - 0x43 ,\t97 ", {65, 66, 67, 97}}, {"0X41", {65}}, {"010", {8}}, {"0", {0}}, {"08", {}},
        {"0x", {}}, {"+65", {65}}, {"+0x41-+0101", {65}}, {"+", {}}, {"++65", {}}, {"+ 65", {}},
        {"-5", {}}, {"5-", {}}, {"-", {}}, {"1-2-3", {}}, {",,65,,", {65}}, {" , ", {}},
        {"65\n66", {}}, {"32-126\n200", {}}, {"65 66", {}}, {"a", {}}, {"A", {}},
        {"4294967296", {0}}, {"4294967297-4294967298", {1, 2}}, {"99999999999999999999", {0xFFFFFFFFu}},
        {"", {}}, {"   ", {}}, {"\f\v65\r\n", {65}},
        // Dropped pieces do not affect their neighbours.
        {"65,x,66,3-1,67", {65, 66, 67}},
        // A zero byte ends the number as it ends a C string.
        {"65\0zz,66"s, {65, 66}},
        // Only the six trimmed characters count as blanks.
        {"\xa0" "65", {}},
        // A range whose last code is the largest 32-bit value stops there instead of wrapping.
        {"4294967294-4294967295", {0xFFFFFFFEu, 0xFFFFFFFFu}}, {"4294967295-99999999999999999999", {0xFFFFFFFFu}},
        // Ranges of more than 0x110000 codes are dropped; exactly 0x110000 is kept.
        {"0-1114112,65", {65}}, {"0-4000000000", {}}, {"0-1114111", Ascending(0, 0x10FFFF)},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(ParseCharCodeText(text), expected) << testing::PrintToString(text);
}

TEST(CharRangeParser, ListStopsGrowingAtTheCap)
{
    const CharCodeList codes = ParseCharCodeText("1-1114111,0-9,5");
    ASSERT_EQ(codes.size(), kMaxCharCodes);
    EXPECT_EQ(codes.front(), 1u);
    EXPECT_EQ(codes[kMaxCharCodes - 2], 0x10FFFFu);
    EXPECT_EQ(codes.back(), 0u);
}

TEST(CharRangeParser, MegabyteTextsFinish)
{
    const std::size_t megabyte = 1 << 20;
    std::string ranges, singles;
    while (ranges.size() < megabyte)
        ranges += "0-1114111,";
    while (singles.size() < megabyte)
        singles += "1,";
    EXPECT_EQ(ParseCharCodeText(ranges).size(), kMaxCharCodes);
    EXPECT_EQ(ParseCharCodeText(singles).size(), megabyte / 2);
    EXPECT_EQ(ParseCharCodeText(std::string(megabyte, '9')), CharCodeList{0xFFFFFFFFu});
    for (char filler : {' ', '-', ','})
        EXPECT_TRUE(ParseCharCodeText(std::string(megabyte, filler)).empty()) << filler;
}

} // namespace
