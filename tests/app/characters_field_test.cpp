// Keys typed into the characters field, sent through the X server like real typing.
#include "gui_test_support.h"

#include <gtest/gtest.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

namespace {

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
