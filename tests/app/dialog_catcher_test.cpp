// The harness itself: caught dialogs report what they show and return the given answer,
// so command tests can choose files without a visible dialog.
#include "gui_test_support.h"

#include <gtest/gtest.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>

namespace {

TEST(DialogCatcherTest, RecordsMessageBoxesAndAnswersThem)
{
    DialogCatcher dialogs;
    dialogs.answer = [](wxDialog&) { return int(wxID_CANCEL); };
    wxMessageDialog box(guitest::MainWindow(), "text", "Error", wxOK | wxICON_ERROR);
    EXPECT_EQ(box.ShowModal(), wxID_CANCEL);
    ASSERT_EQ(dialogs.seen.size(), 1u);
    EXPECT_EQ(dialogs.seen[0].title, "Error");
    EXPECT_EQ(dialogs.seen[0].message, "text");
    EXPECT_EQ(dialogs.seen[0].style & 0x204, 0x204);
}

// Table: the two kinds of file dialog the program opens.
TEST(DialogCatcherTest, ChooseFilePicksThePathInTheRealDialog)
{
    const struct
    {
        long style;
        const char* path;
    } cases[] = {
        {wxFD_OPEN | wxFD_FILE_MUST_EXIST, "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"},
        {wxFD_SAVE | wxFD_OVERWRITE_PROMPT, "/tmp/Font.cpp"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        DialogCatcher dialogs;
        dialogs.answer = guitest::ChooseFile(c.path);
        wxFileDialog* chooser = new wxFileDialog(guitest::MainWindow(), "Choose", "", "",
                                                 "Any (*.*)|*.*", c.style);
        EXPECT_EQ(chooser->ShowModal(), wxID_OK);
        const wxFileName expected(c.path);
        EXPECT_EQ(chooser->GetPath(), c.path);
        EXPECT_EQ(chooser->GetFilename(), expected.GetFullName());
        EXPECT_EQ(chooser->GetDirectory(), expected.GetPath());
        chooser->Destroy();
        ASSERT_EQ(dialogs.seen.size(), 1u);
        EXPECT_EQ(dialogs.seen[0].className, "wxFileDialog");
        EXPECT_EQ(dialogs.seen[0].message, "Choose");
        EXPECT_EQ(dialogs.seen[0].wildcard, "Any (*.*)|*.*");
        EXPECT_EQ(dialogs.seen[0].style & c.style, c.style);
    }
}

} // namespace
