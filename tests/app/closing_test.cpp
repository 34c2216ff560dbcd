// Quitting and closing end the program at once, without a question.
#include "gui_test_support.h"

#include <gtest/gtest.h>

namespace {

TEST(ClosingTest, QuitDestroysTheWindow)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    DialogCatcher dialogs;
    guitest::ChooseMenuItem(*window, wxID_EXIT);
    EXPECT_TRUE(guitest::WaitFor([] { return guitest::MainWindow() == nullptr; }));
    EXPECT_TRUE(dialogs.seen.empty());
}

TEST(ClosingTest, CloseRequestThatCouldBeRefusedIsStillHonoured)
{
    GuiMain* window = guitest::MainWindow();
    ASSERT_NE(window, nullptr);
    DialogCatcher dialogs;
    EXPECT_TRUE(window->Close(false));
    EXPECT_TRUE(guitest::WaitFor([] { return guitest::MainWindow() == nullptr; }));
    EXPECT_TRUE(dialogs.seen.empty());
}

} // namespace
