// Keys typed into the characters field, sent through the X server like real typing.
#include "gui_test_support.h"

#include <gtest/gtest.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <numeric>

namespace {

CharCodeList Range(uint32_t first, uint32_t last)
{
    CharCodeList codes(last - first + 1);
    std::iota(codes.begin(), codes.end(), first);
    return codes;
}

// One step after the other in the same field: typing keeps the list parsed before;
// Enter replaces it, also by an empty one, and inserts no line break.
TEST(CharactersFieldTest, OnlyEnterReplacesTheList)
{
    GuiMainProbe probe(*guitest::MainWindow());
    wxTextCtrl& chars = *probe.CharsCtrl();
    EXPECT_EQ(probe.HeightCtrl()->GetValue(), "16");
    EXPECT_EQ(chars.GetValue(), "32-126");
    EXPECT_EQ(probe.CharCodes(), Range(32, 126));

    const struct
    {
        const char* typed;
        CharCodeList expected;
    } steps[] = {
        {"65-67, 0x61", {65, 66, 67, 97}},
        {"A", {}},
        {"0x20-0x22", Range(32, 34)},
    };
    wxUIActionSimulator keys;
    for (const auto& step : steps) {
        SCOPED_TRACE(step.typed);
        const CharCodeList before = probe.CharCodes();
        ASSERT_NE(before, step.expected) << "each step must change the list";
        guitest::TypeInto(chars, step.typed);
        guitest::ProcessEvents();
        EXPECT_EQ(probe.CharCodes(), before) << "typing alone changed the list";

        keys.Char(WXK_RETURN);
        EXPECT_TRUE(guitest::WaitFor([&] { return probe.CharCodes() == step.expected; }));
        EXPECT_EQ(chars.GetValue(), step.typed) << "Enter changed the text";
    }
}

} // namespace
