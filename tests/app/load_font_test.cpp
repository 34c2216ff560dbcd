// File > Load Font through the real GTK open dialog, chosen by keyboard.
#include "gui_test_support.h"

#include "raster/ft_font.h"

#include <gtest/gtest.h>
#include <wx/filedlg.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

const char* const kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Presses Ctrl+L in the main window, answers the dialogs with `answer` and waits for the
// command to finish.
void LoadFontByKeyboard(DialogCatcher& dialogs, std::function<int(wxDialog&)> answer)
{
    GuiMain& window = *guitest::MainWindow();
    dialogs.answer = std::move(answer);
    ASSERT_TRUE(guitest::FocusWindow(window.GetTitle()));
    wxUIActionSimulator keys;
    keys.Char('l', wxMOD_CONTROL);
    ASSERT_TRUE(guitest::WaitFor([&] { return !dialogs.seen.empty(); })) << "no dialog";
    guitest::ProcessEvents();
}

TEST(LoadFontTest, LoadsTheFileTypedIntoTheDialog)
{
    GuiMainProbe probe(*guitest::MainWindow());
    ASSERT_FALSE(probe.Font()->HasFace());
    DialogCatcher dialogs;
    LoadFontByKeyboard(dialogs, guitest::ChooseFile(kDejaVuSans));

    ASSERT_EQ(dialogs.seen.size(), 1u) << "no error box";
    EXPECT_EQ(dialogs.seen[0].className, "wxFileDialog");
    EXPECT_EQ(dialogs.seen[0].message, "Choose File to Load Font From");
    EXPECT_EQ(dialogs.seen[0].wildcard, "Font File (*.ttf)|*.ttf");
    EXPECT_EQ(dialogs.seen[0].style & (wxFD_OPEN | wxFD_SAVE | wxFD_FILE_MUST_EXIST),
              wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    ASSERT_TRUE(probe.Font()->HasFace());
    EXPECT_STREQ(probe.Font()->Face()->family_name, "DejaVu Sans");
}

TEST(LoadFontTest, TextFileNamedTtfShowsTheErrorAndKeepsTheFace)
{
    FTFont& font = *GuiMainProbe(*guitest::MainWindow()).Font();
    font.LoadFace(kDejaVuSans);
    const FT_Face earlier = font.Face();

    std::string dir = testing::TempDir() + "veltrane-load-font.XXXXXX";
    ASSERT_NE(mkdtemp(dir.data()), nullptr);
    const std::string bad = dir + "/bad.ttf";
    std::ofstream(bad) << "This is a text file, not a font.\n";
    DialogCatcher dialogs;
    const auto chooseBad = guitest::ChooseFile(bad);
    LoadFontByKeyboard(dialogs, [&](wxDialog& dialog) {
        return dynamic_cast<wxFileDialog*>(&dialog) != nullptr ? chooseBad(dialog) : int(wxID_OK);
    });
    std::filesystem::remove_all(dir);

    ASSERT_EQ(dialogs.seen.size(), 2u);
    const DialogCatcher::Seen& box = dialogs.seen[1];
    EXPECT_EQ(box.className, "wxMessageDialog");
    EXPECT_EQ(box.title, "Error");
    EXPECT_EQ(box.message, "cannot load font file");
    EXPECT_EQ(box.style, wxOK | wxICON_ERROR);
    EXPECT_EQ(font.Face(), earlier) << "the earlier face stays in use";
}

} // namespace
