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

TEST(CharactersFieldTest, ListHoldsTheDefaultRangeRightAfterStartUp)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GuiMainProbe(*window).CharCodes(), Range(32, 126));
}

// Table, one step after the other in the same field: typing keeps the list parsed
// before; Enter replaces it, also by an empty one.
TEST(CharactersFieldTest, OnlyEnterReplacesTheList)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    GuiMainProbe probe(*window);
    wxTextCtrl* chars = probe.CharsCtrl();
    ASSERT_TRUE(guitest::FocusWindow(window->GetTitle()));
    chars->SetFocus();
    ASSERT_TRUE(guitest::WaitFor([&] { return wxWindow::FindFocus() == chars; }));

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
        keys.Char('a', wxMOD_CONTROL); // the typed text replaces the field's
        keys.Text(step.typed);
        ASSERT_TRUE(guitest::WaitFor([&] { return chars->GetValue() == step.typed; }))
            << "typed text did not arrive: " << chars->GetValue();
        guitest::ProcessEvents();
        EXPECT_EQ(probe.CharCodes(), before) << "typing alone changed the list";

        keys.Char(WXK_RETURN);
        EXPECT_TRUE(guitest::WaitFor([&] { return probe.CharCodes() == step.expected; }));
    }
}

TEST(CharactersFieldTest, EnterInsertsNoLineBreak)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    wxTextCtrl* chars = GuiMainProbe(*window).CharsCtrl();
    ASSERT_TRUE(guitest::FocusWindow(window->GetTitle()));
    chars->SetFocus();
    chars->SetInsertionPointEnd();
    ASSERT_TRUE(guitest::WaitFor([&] { return wxWindow::FindFocus() == chars; }));

    wxUIActionSimulator keys;
    keys.Text(",65");
    ASSERT_TRUE(guitest::WaitFor([&] { return chars->GetValue() == "32-126,65"; }))
        << "typed text did not arrive: " << chars->GetValue();
    keys.Char(WXK_RETURN);
    guitest::ProcessEvents();
    // Typing after Enter proves the key has been handled before the value is read.
    keys.Text("6");
    ASSERT_TRUE(guitest::WaitFor([&] { return chars->GetValue().EndsWith("6"); }));
    EXPECT_EQ(chars->GetValue(), "32-126,656");
}

} // namespace
