// The Export button in the real window: fields typed, the button clicked and the save dialog
// answered as a user would, then the files on disk and the message boxes checked.
#include "gui_test_support.h"

#include "export/export_font.h"
#include "test_support.h"

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
    wxUIActionSimulator().Char(WXK_RETURN);
    ASSERT_TRUE(guitest::WaitFor([&] { return Probe().CharCodes() == expected; })) << "Enter did not set the list";
}

// Clicks Export with the mouse, answers the save dialog by typing `path` into it (message
// boxes get OK) and returns every dialog the click opened.
std::vector<DialogCatcher::Seen> PressExport(const fs::path& path, bool accept = true)
{
    DialogCatcher dialogs;
    auto chooseFile = guitest::ChooseFile(path.string(), accept);
    dialogs.answer = [chooseFile](wxDialog& dialog) {
        return dynamic_cast<wxFileDialog*>(&dialog) != nullptr ? chooseFile(dialog) : int(wxID_OK);
    };
    wxButton* button = Probe().ExportButton();
    wxUIActionSimulator mouse;
    mouse.MouseMove(button->GetScreenRect().GetPosition() + button->GetSize() / 2);
    mouse.MouseClick();
    EXPECT_TRUE(guitest::WaitFor([&] { return !dialogs.seen.empty(); }, std::chrono::seconds(30))) << "no dialog";
    guitest::ProcessEvents();
    return dialogs.seen;
}

void ExpectSaveDialog(const DialogCatcher::Seen& seen)
{
    EXPECT_EQ(seen.className, "wxFileDialog");
    EXPECT_EQ(seen.message, "Choose File to Save Data To");
    EXPECT_EQ(seen.wildcard, "C Source File (*.cpp)|*.cpp");
    EXPECT_EQ(seen.style & (wxFD_SAVE | wxFD_OVERWRITE_PROMPT), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
}

void ExpectErrorBox(const DialogCatcher::Seen& seen, const wxString& message)
{
    EXPECT_EQ(std::vector<wxString>({seen.className, seen.title, seen.message}),
              std::vector<wxString>({"wxMessageDialog", "Error", message}));
    EXPECT_EQ(seen.style, wxOK | wxICON_ERROR);
}

// A cancelled save dialog writes nothing and says nothing; saved, the files equal the
// writer's own for the same inputs.
TEST(ExportCommandTest, CancelWritesNothingSaveWritesWhatTheWriterWrites)
{
    TempDir dir, expected;
    Probe().Font()->LoadFace(kDejaVuSans.c_str());
    guitest::TypeInto(*Probe().HeightCtrl(), "24");
    CharCodeList codes = {65, 66, 67, 68, 69, 70, 97};
    EnterCharacters("65-70, 97", codes);

    const auto cancelled = PressExport(dir.Path() / "Font.cpp", false);
    ASSERT_EQ(cancelled.size(), 1u);
    ExpectSaveDialog(cancelled[0]);
    EXPECT_TRUE(fs::is_empty(dir.Path()));
    const auto saved = PressExport(dir.Path() / "Font.cpp");
    ASSERT_EQ(saved.size(), 1u) << "a successful export shows no message";

    FTFont font;
    font.LoadFace(kDejaVuSans.c_str());
    std::string baseName = "Font";
    ASSERT_TRUE(ExportFont(&font, baseName, expected.Prefix(), 24, &codes));
    for (const char* file : {"Font.cpp", "Font.h"})
        EXPECT_TRUE(ReadFile(dir.Path() / file) == ReadFile(expected.Path() / file)) << file;
}

// Faults the user can fix are named before the save dialog would ask for a name in vain;
// should it open anyway, it is answered, so that a wrongly written file shows.
TEST(ExportCommandTest, FaultsAreNamedBeforeTheSaveDialog)
{
    const struct
    {
        bool fontLoaded;
        const char* height;
        const char* chars;
        CharCodeList codes;
        const char* message;
    } rows[] = {
        // In this order: the height, the codes, then the font.
        {false, "5", "65, 300", {65, 300}, "Font size must be in between 6 and 256 !"},
        {false, "16", "65, 300", {65, 300}, "Character code 300 is above 255 and cannot be exported !"},
        {false, "16", "65", {65}, "No font loaded !"},
        {true, "16px", "65", {65}, "Invalid font size !"},
        {true, "5", "65", {65}, "Font size must be in between 6 and 256 !"},
        {true, "16", "65, 300", {65, 300}, "Character code 300 is above 255 and cannot be exported !"},
    };
    ASSERT_FALSE(Probe().Font()->HasFace()) << "each test starts with a fresh window";
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.message);
        if (row.fontLoaded && !Probe().Font()->HasFace())
            Probe().Font()->LoadFace(kDejaVuSans.c_str());
        guitest::TypeInto(*Probe().HeightCtrl(), row.height);
        EnterCharacters(row.chars, row.codes);
        const auto seen = PressExport(dir.Path() / "Font.cpp");
        ASSERT_EQ(seen.size(), 1u);
        ExpectErrorBox(seen[0], row.message);
        EXPECT_TRUE(fs::is_empty(dir.Path()));
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
        const auto seen = PressExport(dir.Path() / row.typed);
        ASSERT_EQ(seen.size(), 2u);
        ExpectSaveDialog(seen[0]);
        ExpectErrorBox(seen[1], row.message);
    }
}

} // namespace
