// Keys typed into the characters field, sent through the X server like real typing.
#include "gui_test_support.h"

#include <gtest/gtest.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

namespace {

// One step after the other in the same field: typing keeps the list parsed before; Enter
// replaces it, also by an empty one, and inserts no line break.
TEST(CharactersFieldTest, OnlyEnterReplacesTheList)
{
    GuiMainProbe probe(*guitest::MainWindow());
    wxTextCtrl& chars = *probe.CharsCtrl();
    EXPECT_EQ(probe.HeightCtrl()->GetValue() + " " + chars.GetValue(), "16 32-126");
    EXPECT_EQ(probe.CharCodes().size(), 95u);
    EXPECT_EQ(probe.CharCodes().front() + probe.CharCodes().back(), 32u + 126u);

    const struct
    {
        const char* typed;
        CharCodeList expected;
    } steps[] = {{"65-67, 0x61", {65, 66, 67, 97}}, {"A", {}}, {"0x20-0x22", {32, 33, 34}}};
    for (const auto& step : steps) {
        SCOPED_TRACE(step.typed);
        const CharCodeList before = probe.CharCodes();
        guitest::TypeInto(chars, step.typed);
        guitest::ProcessEvents();
        EXPECT_EQ(probe.CharCodes(), before) << "typing alone changed the list";
        wxUIActionSimulator().Char(WXK_RETURN);
        EXPECT_TRUE(guitest::WaitFor([&] { return probe.CharCodes() == step.expected; }));
        EXPECT_EQ(chars.GetValue(), step.typed) << "Enter changed the text";
    }
}

} // namespace
