#include "charset/char_range_parser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

CharCodeList Ascending(uint32_t first, uint32_t last)
{
    CharCodeList codes(last - first + 1);
    std::iota(codes.begin(), codes.end(), first);
    return codes;
}

struct ParseCase {
    std::string text;
    CharCodeList expected;
};

void PrintTo(const ParseCase& c, std::ostream* os) { *os << testing::PrintToString(c.text); }

class CharRangeParserTable : public testing::TestWithParam<ParseCase> {};

TEST_P(CharRangeParserTable, YieldsCodesInTextOrder)
{
    EXPECT_EQ(ParseCharCodeText(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, CharRangeParserTable, testing::Values(
    ParseCase{"32-126", Ascending(32, 126)},
    ParseCase{"65,66,65", {65, 66, 65}},
    ParseCase{"70-65", {}},
    ParseCase{"65-65", {65}},
    ParseCase{" 0x41 - 0x43 ,\t97 ", {65, 66, 67, 97}},
    ParseCase{"0X41", {65}},
    ParseCase{"010", {8}},
    ParseCase{"0", {0}},
    ParseCase{"08", {}},
    ParseCase{"0x", {}},
    ParseCase{"+65", {65}},
    ParseCase{"+0x41-+0101", {65}},
    ParseCase{"+", {}},
    ParseCase{"++65", {}},
    ParseCase{"+ 65", {}},
    ParseCase{"-5", {}},
    ParseCase{"5-", {}},
    ParseCase{"-", {}},
    ParseCase{"1-2-3", {}},
    ParseCase{",,65,,", {65}},
    ParseCase{" , ", {}},
    ParseCase{"65\n66", {}},
    ParseCase{"32-126\n200", {}},
    ParseCase{"65 66", {}},
    ParseCase{"a", {}},
    ParseCase{"A", {}},
    ParseCase{"4294967296", {0}},
    ParseCase{"4294967297-4294967298", {1, 2}},
    ParseCase{"99999999999999999999", {0xFFFFFFFFu}},
    ParseCase{"", {}},
    ParseCase{"   ", {}},
    ParseCase{"\f\v65\r\n", {65}},
    // Dropped pieces do not affect their neighbours.
    ParseCase{"65,x,66,3-1,67", {65, 66, 67}},
    // A zero byte ends the number as it ends a C string.
    ParseCase{"65\0zz,66"s, {65, 66}},
    // Only the six trimmed characters count as blanks.
    ParseCase{"\xa0" "65", {}},
    // A range whose last code is the largest 32-bit value stops there instead of wrapping.
    ParseCase{"4294967294-4294967295", {0xFFFFFFFEu, 0xFFFFFFFFu}},
    ParseCase{"4294967295-99999999999999999999", {0xFFFFFFFFu}},
    // Ranges of more than 0x110000 codes are dropped; exactly 0x110000 is kept.
    ParseCase{"0-1114112,65", {65}},
    ParseCase{"0-4000000000", {}},
    ParseCase{"0-1114111", Ascending(0, 0x10FFFF)}
));

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
    std::string ranges;
    while (ranges.size() < megabyte)
        ranges += "0-1114111,";
    EXPECT_EQ(ParseCharCodeText(ranges).size(), kMaxCharCodes);

    std::string singles;
    while (singles.size() < megabyte)
        singles += "1,";
    EXPECT_EQ(ParseCharCodeText(singles).size(), megabyte / 2);

    EXPECT_EQ(ParseCharCodeText(std::string(megabyte, '9')), CharCodeList{0xFFFFFFFFu});
    EXPECT_TRUE(ParseCharCodeText(std::string(megabyte, ' ')).empty());
    EXPECT_TRUE(ParseCharCodeText(std::string(megabyte, '-')).empty());
    EXPECT_TRUE(ParseCharCodeText(std::string(megabyte, ',')).empty());
}

} // namespace
