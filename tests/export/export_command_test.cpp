// The Export button in the real window: fields typed, the button clicked and the save
// dialog answered as a user would, then the files on disk and the message boxes checked.
#include "gui_test_support.h"

#include "export/export_font.h"
#include "export_test_support.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/msgdlg.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

namespace fs = std::filesystem;

namespace {

GuiMainProbe Probe()
{
    return GuiMainProbe(*guitest::MainWindow());
}

// Types a list into the characters field and presses Enter, which makes it the list.
void EnterCharacters(const wxString& text, const CharCodeList& expected)
{
    guitest::TypeInto(*Probe().CharsCtrl(), text);
    wxUIActionSimulator keys;
    keys.Char(WXK_RETURN);
    ASSERT_TRUE(guitest::WaitFor([&] { return Probe().CharCodes() == expected; }))
        << "Enter did not set the list";
}

// Clicks the Export button with the mouse. The click's handler, with every dialog it
// opens, has run to its end once a dialog has been recorded and control is back here.
void PressExport(const DialogCatcher& dialogs)
{
    wxButton* button = Probe().ExportButton();
    wxUIActionSimulator mouse;
    mouse.MouseMove(button->GetScreenRect().GetPosition() + button->GetSize() / 2);
    mouse.MouseClick();
    ASSERT_TRUE(guitest::WaitFor([&] { return !dialogs.seen.empty(); }, std::chrono::seconds(30)))
        << "the click opened no dialog";
    guitest::ProcessEvents();
}

// Answers the save dialog by typing `path` into it; message boxes get OK.
std::function<int(wxDialog&)> SaveAs(const fs::path& path, bool accept = true)
{
    auto chooseFile = guitest::ChooseFile(path.string(), accept);
    return [chooseFile](wxDialog& dialog) {
        return dynamic_cast<wxFileDialog*>(&dialog) != nullptr ? chooseFile(dialog) : int(wxID_OK);
    };
}

void ExpectSaveDialog(const DialogCatcher::Seen& seen)
{
    EXPECT_EQ(seen.className, "wxFileDialog");
    EXPECT_EQ(seen.message, "Choose File to Save Data To");
    EXPECT_EQ(seen.wildcard, "C Source File (*.cpp)|*.cpp");
    EXPECT_EQ(seen.style & (wxFD_SAVE | wxFD_OVERWRITE_PROMPT), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
}

void ExpectOneErrorBox(const std::vector<DialogCatcher::Seen>& seen, const wxString& message)
{
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].className, "wxMessageDialog");
    EXPECT_EQ(seen[0].title, "Error");
    EXPECT_EQ(seen[0].message, message);
    EXPECT_EQ(seen[0].style, wxOK | wxICON_ERROR);
}

// A cancelled save dialog writes nothing; the same export saved equals the writer's own
// output for the same inputs.
TEST(ExportCommandTest, CancelWritesNothingSaveWritesWhatTheWriterWrites)
{
    TempDir dir;
    Probe().Font()->LoadFace(kDejaVuSans);
    guitest::TypeInto(*Probe().HeightCtrl(), "24");
    const CharCodeList codes = {65, 66, 67, 68, 69, 70, 97};
    EnterCharacters("65-70, 97", codes);

    { // one catcher at a time: every registered one would answer the dialog
        DialogCatcher cancelled;
        cancelled.answer = SaveAs(dir.Path() / "Font.cpp", false);
        PressExport(cancelled);
        ASSERT_EQ(cancelled.seen.size(), 1u) << "no message after a cancel";
        ExpectSaveDialog(cancelled.seen[0]);
        EXPECT_TRUE(fs::is_empty(dir.Path()));
    }
    DialogCatcher saved;
    saved.answer = SaveAs(dir.Path() / "Font.cpp");
    PressExport(saved);
    ASSERT_EQ(saved.seen.size(), 1u) << "a successful export shows no message";
    ExpectSaveDialog(saved.seen[0]);

    TempDir expected;
    FTFont font;
    font.LoadFace(kDejaVuSans);
    std::string baseName = "Font";
    CharCodeList expectedCodes = codes;
    ASSERT_TRUE(ExportFont(&font, baseName, expected.Prefix(), 24, &expectedCodes));
    EXPECT_EQ(ReadFile(dir.Path() / "Font.cpp"), ReadFile(expected.Path() / "Font.cpp"));
    EXPECT_EQ(ReadFile(dir.Path() / "Font.h"), ReadFile(expected.Path() / "Font.h"));
}

// Faults the user can fix are named before the save dialog would ask for a name in vain.
// Should the dialog open anyway, it is answered, so that a wrongly written file shows.
TEST(ExportCommandTest, FaultsAreNamedBeforeTheSaveDialog)
{
    const struct
    {
        const char* height;
        const char* chars;
        CharCodeList codes;
        const char* message;
    } rows[] = {
        {"16", "65", {65}, "No font loaded !"}, // first: no font is loaded yet
        {"16px", "65", {65}, "Invalid font size !"},
        {"5", "65", {65}, "Font size must be in between 6 and 256 !"},
        {"16", "65, 300", {65, 300}, "Character code 300 is above 255 and cannot be exported !"},
    };
    ASSERT_FALSE(Probe().Font()->HasFace()) << "each test starts with a fresh window";
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.message);
        guitest::TypeInto(*Probe().HeightCtrl(), row.height);
        EnterCharacters(row.chars, row.codes);
        DialogCatcher dialogs;
        dialogs.answer = SaveAs(dir.Path() / "Font.cpp");
        PressExport(dialogs);
        ExpectOneErrorBox(dialogs.seen, row.message);
        EXPECT_TRUE(fs::is_empty(dir.Path()));
        Probe().Font()->LoadFace(kDejaVuSans);
    }
}

// Failures after the save dialog: the source cannot be opened (a folder has the sanitized
// name), or FreeType cannot load a glyph.
TEST(ExportCommandTest, WriterFailuresAreShownInTheErrorBox)
{
    TempDir dir;
    fs::create_directory(dir.Path() / "My_Font.cpp");
    const struct
    {
        std::string font;
        const char* typed;
        const char* message;
    } rows[] = {
        {kDejaVuSans, "My Font.cpp", "Error writing file !"},
        {FontWithBrokenGlyph(kDejaVuSans, dir.Path(), 'B'), "Font.cpp", "cannot load glyph"},
    };
    EnterCharacters("65-67", {65, 66, 67});
    for (const auto& row : rows) {
        SCOPED_TRACE(row.message);
        Probe().Font()->LoadFace(row.font.c_str());
        DialogCatcher dialogs;
        dialogs.answer = SaveAs(dir.Path() / row.typed);
        PressExport(dialogs);
        ASSERT_EQ(dialogs.seen.size(), 2u);
        ExpectSaveDialog(dialogs.seen[0]);
        ExpectOneErrorBox({dialogs.seen[1]}, row.message);
    }
}

} // namespace
