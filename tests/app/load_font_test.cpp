// File > Load Font through the real GTK open dialog, chosen by keyboard.
#include "gui_test_support.h"

#include "raster/ft_font.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <wx/filedlg.h>
#include <wx/uiaction.h>

#include <fstream>

namespace {

// Presses Ctrl+L in the main window, types `path` into the file dialog (message boxes get OK)
// and returns every dialog the command opened.
std::vector<DialogCatcher::Seen> LoadFontByKeyboard(const std::string& path)
{
    DialogCatcher dialogs;
    auto chooseFile = guitest::ChooseFile(path);
    dialogs.answer = [chooseFile](wxDialog& dialog) {
        return dynamic_cast<wxFileDialog*>(&dialog) != nullptr ? chooseFile(dialog) : int(wxID_OK);
    };
    EXPECT_TRUE(guitest::FocusWindow(guitest::MainWindow()->GetTitle()));
    wxUIActionSimulator().Char('l', wxMOD_CONTROL);
    EXPECT_TRUE(guitest::WaitFor([&] { return !dialogs.seen.empty(); })) << "no dialog";
    guitest::ProcessEvents();
    return dialogs.seen;
}

TEST(LoadFontTest, LoadsTheFileTypedIntoTheDialog)
{
    FTFont& font = *GuiMainProbe(*guitest::MainWindow()).Font();
    ASSERT_FALSE(font.HasFace());
    const auto seen = LoadFontByKeyboard(kDejaVuSans);
    ASSERT_EQ(seen.size(), 1u) << "no error box";
    EXPECT_EQ(std::vector<wxString>({seen[0].className, seen[0].message, seen[0].wildcard}),
              std::vector<wxString>({"wxFileDialog", "Choose File to Load Font From", "Font File (*.ttf)|*.ttf"}));
    EXPECT_EQ(seen[0].style & (wxFD_OPEN | wxFD_SAVE | wxFD_FILE_MUST_EXIST), wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    ASSERT_TRUE(font.HasFace());
    EXPECT_STREQ(font.Face()->family_name, "DejaVu Sans");
}

TEST(LoadFontTest, TextFileNamedTtfShowsTheErrorAndKeepsTheFace)
{
    FTFont& font = *GuiMainProbe(*guitest::MainWindow()).Font();
    font.LoadFace(kDejaVuSans.c_str());
    const FT_Face earlier = font.Face();
    TempDir dir;
    std::ofstream(dir.Path() / "bad.ttf") << "This is a text file, not a font.\n";
    const auto seen = LoadFontByKeyboard((dir.Path() / "bad.ttf").string());
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(std::vector<wxString>({seen[1].className, seen[1].title, seen[1].message}),
              std::vector<wxString>({"wxMessageDialog", "Error", "cannot load font file"}));
    EXPECT_EQ(seen[1].style, wxOK | wxICON_ERROR);
    EXPECT_EQ(font.Face(), earlier) << "the earlier face stays in use";
}

} // namespace
