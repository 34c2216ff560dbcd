#include "export/kerning_pairs.h"
#include "export/kerning_tables.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

namespace {

std::string Tables(unsigned code, const std::vector<KerningPair>& pairs)
{
    return Captured([&](OutputWriter& out) { WriteKerningTables(out, code, pairs); });
}

} // namespace

TEST(KerningTablesTest, WritesParallelTablesClosedByZero)
{
    EXPECT_EQ(Tables(65, {{86, -1}, {89, -2}}), "static const char char_65_ktp[] = {86, 89, 0};\n"
                                                "static const int8_t char_65_ktd[] = {-1, -2, 0};\n");
    // The previous character is written unsigned, the delta signed, over their whole range.
    EXPECT_EQ(Tables(7, {{static_cast<char>(200), -128}, {127, 127}}),
              "static const char char_7_ktp[] = {200, 127, 0};\n"
              "static const int8_t char_7_ktd[] = {-128, 127, 0};\n");
}

TEST(KerningTablesTest, CollectsPairsWithEveryListedCode)
{
    struct Case
    {
        const char* font;
        unsigned height;
        CharCodeList codes;
        unsigned code;
        std::vector<std::pair<int, int>> expected; // (prev as unsigned, delta)
    };
    const Case cases[] = {
        {kDejaVuSans, 16, {65, 86}, 65, {{86, -1}}}, // a code listed after is searched too
        {kDejaVuSans, 16, {65, 86}, 86, {{65, -1}}},
        {kDejaVuSans, 40, {65, 86}, 65, {{65, 1}, {86, -3}}},  // kerned with itself, list order
        {kDejaVuSans, 40, {86, 65}, 65, {{86, -3}, {65, 1}}},
        {kDejaVuSans, 40, {65, 86, 200}, 65, {{65, 1}, {86, -3}}}, // 8-bit codes find nothing
        {kDejaVuSans, 40, {65, 86}, 86 + 128, {}},
        {kDejaVuSans, 8000, {65, 86}, 65, {{65, 127}, {86, -128}}}, // clamped to the 8-bit delta
        {kDejaVuSansMono, 40, {65, 86, 84, 111}, 65, {}},             // no kerning data
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.height) + " px, code " + std::to_string(c.code));
        FTFont font;
        font.LoadFace(c.font);
        font.SetPixelSize(c.height);
        std::vector<std::pair<int, int>> found;
        for (const KerningPair& pair : CollectKerningPairs(&font, &c.codes, c.code))
            found.emplace_back(static_cast<unsigned char>(pair.prev), pair.delta);
        EXPECT_EQ(found, c.expected);
    }
}
