// Help > About: one message box with the title and one line about the tool.
#include "gui_test_support.h"

#include "app/app_texts.h"

#include <gtest/gtest.h>
#include <wx/msgdlg.h>

namespace {

TEST(AboutBoxTest, ShowsTitleAndOneMoreLineWithAnOkButton)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    DialogCatcher dialogs;
    guitest::ChooseMenuItem(*window, wxID_ABOUT);

    ASSERT_EQ(dialogs.seen.size(), 1u);
    const DialogCatcher::Seen& box = dialogs.seen[0];
    EXPECT_EQ(box.className, "wxMessageDialog");
    EXPECT_EQ(box.title, "About");
    EXPECT_EQ(box.message.BeforeFirst('\n'), window->GetTitle());
    EXPECT_EQ(box.message.Freq('\n'), 1) << "exactly two lines";
    EXPECT_FALSE(box.message.EndsWith("\n"));
    EXPECT_FALSE(box.message.AfterFirst('\n').empty());
    EXPECT_EQ(box.message, g_aboutText);
    EXPECT_EQ(box.style & (wxOK | wxCANCEL | wxYES_NO | wxHELP), wxOK);
    EXPECT_EQ(box.style & wxICON_MASK, 0) << "no icon requested";
}

TEST(AboutBoxTest, DismissingChangesNothing)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    DialogCatcher dialogs;
    dialogs.answer = [](wxDialog&) { return int(wxID_CANCEL); }; // Escape or the close button
    guitest::ChooseMenuItem(*window, wxID_ABOUT);
    guitest::ProcessEvents();

    EXPECT_EQ(dialogs.seen.size(), 1u);
    EXPECT_EQ(guitest::MainWindow(), window);
    EXPECT_TRUE(window->IsShown());
}

} // namespace
