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

#include <algorithm>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr long kErrorBoxStyle = 0x204;
const CharCodeList kTypedCodes = {65, 66, 67, 68, 69, 70, 97};

GuiMain& Window()
{
    GuiMain* window = guitest::MainWindow();
    if (window == nullptr)
        throw std::runtime_error("no main window");
    return *window;
}

GuiMainProbe Probe()
{
    return GuiMainProbe(Window());
}

std::vector<std::string> FilesIn(const fs::path& dir)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Replaces a field's text by typing, as a user who selects all and types over it.
void TypeInto(wxTextCtrl* field, const wxString& text)
{
    ASSERT_TRUE(guitest::FocusWindow(Window().GetTitle()));
    field->SetFocus();
    ASSERT_TRUE(guitest::WaitFor([&] { return wxWindow::FindFocus() == field; }));
    // Emptied first, so that waiting for the typed text also works when it is the old one.
    field->SelectAll();
    wxUIActionSimulator keys;
    keys.Char(WXK_DELETE);
    ASSERT_TRUE(guitest::WaitFor([&] { return field->IsEmpty(); }));
    keys.Text(text.utf8_str());
    ASSERT_TRUE(guitest::WaitFor([&] { return field->GetValue() == text; }))
        << "typed text did not arrive: " << field->GetValue();
}

// Types a list into the characters field and presses Enter, which makes it the list.
void EnterCharacters(const wxString& text, const CharCodeList& expected)
{
    TypeInto(Probe().CharsCtrl(), text);
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
std::function<int(wxDialog&)> SaveAs(const fs::path& path)
{
    auto chooseFile = guitest::ChooseFile(path.string());
    return [chooseFile](wxDialog& dialog) {
        if (dynamic_cast<wxFileDialog*>(&dialog) != nullptr)
            return chooseFile(dialog);
        return int(wxID_OK);
    };
}

// Types `path` into the real save dialog, then presses Escape instead of Enter.
std::function<int(wxDialog&)> TypeThenCancel(const fs::path& path)
{
    return [path](wxDialog& dialog) {
        auto typed = std::make_shared<bool>(false);
        dialog.Bind(wxEVT_SHOW, [&dialog, path, typed](wxShowEvent& event) {
            event.Skip();
            if (!event.IsShown() || *typed)
                return;
            *typed = true;
            dialog.CallAfter([&dialog, path] {
                if (!guitest::FocusWindow(static_cast<wxFileDialog&>(dialog).GetMessage()))
                    ADD_FAILURE() << "the save dialog did not get the keyboard focus";
                wxUIActionSimulator keys;
                keys.Char('a', wxMOD_CONTROL);
                keys.Text(path.string().c_str());
                guitest::ProcessEvents();
                keys.Char(WXK_ESCAPE);
            });
        });
        return int(wxID_NONE);
    };
}

void ExpectOneErrorBox(const DialogCatcher& dialogs, const wxString& message)
{
    ASSERT_EQ(dialogs.seen.size(), 1u);
    EXPECT_EQ(dialogs.seen[0].className, "wxMessageDialog");
    EXPECT_EQ(dialogs.seen[0].title, "Error");
    EXPECT_EQ(dialogs.seen[0].message, message);
    EXPECT_EQ(dialogs.seen[0].style, kErrorBoxStyle);
}

void ExpectSaveDialog(const DialogCatcher::Seen& seen)
{
    EXPECT_EQ(seen.className, "wxFileDialog");
    EXPECT_EQ(seen.message, "Choose File to Save Data To");
    EXPECT_EQ(seen.wildcard, "C Source File (*.cpp)|*.cpp");
    EXPECT_EQ(seen.style & (wxFD_SAVE | wxFD_OVERWRITE_PROMPT), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
}

// The whole road of an export, compared with the writer's own output for the same inputs.
TEST(ExportCommandTest, WritesWhatTheWriterWritesForTheSameInputs)
{
    TempDir dir;
    Probe().Font()->LoadFace(kDejaVuSans);
    TypeInto(Probe().HeightCtrl(), "24");
    EnterCharacters("65-70, 97", kTypedCodes);

    DialogCatcher dialogs;
    dialogs.answer = SaveAs(dir.Path() / "Font.cpp");
    PressExport(dialogs);

    ASSERT_EQ(dialogs.seen.size(), 1u) << "a successful export shows no message";
    ExpectSaveDialog(dialogs.seen[0]);
    ASSERT_EQ(FilesIn(dir.Path()), (std::vector<std::string>{"Font.cpp", "Font.h"}));

    TempDir expected;
    FTFont font;
    font.LoadFace(kDejaVuSans);
    std::string baseName = "Font";
    CharCodeList codes = kTypedCodes;
    ASSERT_TRUE(ExportFont(&font, baseName, expected.Prefix(), 24, &codes));
    EXPECT_EQ(ReadFile(dir.Path() / "Font.cpp"), ReadFile(expected.Path() / "Font.cpp"));
    EXPECT_EQ(ReadFile(dir.Path() / "Font.h"), ReadFile(expected.Path() / "Font.h"));
    EXPECT_EQ(Probe().CharCodes(), kTypedCodes) << "the command changes no state";
    EXPECT_EQ(Probe().HeightCtrl()->GetValue(), "24");
}

struct TypedNameCase {
    const char* typed;
    std::vector<std::string> files;
};

void PrintTo(const TypedNameCase& c, std::ostream* os) { *os << c.typed; }

class TypedNameTable : public testing::TestWithParam<TypedNameCase> {};

TEST_P(TypedNameTable, NamesTheFilesAfterTheBaseName)
{
    TempDir dir;
    Probe().Font()->LoadFace(kDejaVuSans);
    EnterCharacters("65", {65});
    DialogCatcher dialogs;
    dialogs.answer = SaveAs(dir.Path() / GetParam().typed);
    PressExport(dialogs);

    EXPECT_EQ(dialogs.seen.size(), 1u);
    EXPECT_EQ(FilesIn(dir.Path()), GetParam().files);
}

INSTANTIATE_TEST_SUITE_P(Names, TypedNameTable, testing::Values(
    TypedNameCase{"Font.CPP", {"Font.cpp", "Font.h"}},
    TypedNameCase{"Font", {"Font.cpp", "Font.h"}}
));

struct RefusalCase {
    const char* height;
    const char* characters;
    CharCodeList codes; // what Enter makes of `characters`
    bool fontLoaded;
    const char* message;
};

void PrintTo(const RefusalCase& c, std::ostream* os)
{
    *os << c.height << " / " << c.characters << (c.fontLoaded ? "" : " / no font");
}

class RefusalTable : public testing::TestWithParam<RefusalCase> {};

// Faults the user can fix are named before the save dialog would ask for a name in vain.
// Should the dialog open anyway, it is answered, so that a wrongly written file shows.
TEST_P(RefusalTable, NamesTheFaultBeforeTheSaveDialog)
{
    const RefusalCase& c = GetParam();
    TempDir dir;
    if (c.fontLoaded)
        Probe().Font()->LoadFace(kDejaVuSans);
    TypeInto(Probe().HeightCtrl(), c.height);
    EnterCharacters(c.characters, c.codes);

    DialogCatcher dialogs;
    dialogs.answer = SaveAs(dir.Path() / "Font.cpp");
    PressExport(dialogs);

    ExpectOneErrorBox(dialogs, c.message);
    EXPECT_TRUE(FilesIn(dir.Path()).empty());
    EXPECT_EQ(Probe().HeightCtrl()->GetValue(), c.height) << "the field keeps the text as typed";
}

const char* const kCode300 = "Character code 300 is above 255 and cannot be exported !";

INSTANTIATE_TEST_SUITE_P(Faults, RefusalTable, testing::Values(
    RefusalCase{"16px", "65", {65}, true, "Invalid font size !"},
    RefusalCase{"5", "65", {65}, true, "Font size must be in between 6 and 256 !"},
    RefusalCase{"16", "65, 300", {65, 300}, true, kCode300},
    RefusalCase{"16", "65", {65}, false, "No font loaded !"},
    // When several things are wrong, the height is named first, then the list.
    RefusalCase{"abc", "300", {300}, false, "Invalid font size !"},
    RefusalCase{"16", "300", {300}, false, kCode300}
));

TEST(ExportCommandTest, CancellingTheSaveDialogWritesNothing)
{
    TempDir dir;
    Probe().Font()->LoadFace(kDejaVuSans);
    DialogCatcher dialogs;
    dialogs.answer = TypeThenCancel(dir.Path() / "Font.cpp");
    PressExport(dialogs);

    ASSERT_EQ(dialogs.seen.size(), 1u) << "no message after a cancel";
    ExpectSaveDialog(dialogs.seen[0]);
    EXPECT_TRUE(FilesIn(dir.Path()).empty());
}

// Names the dialog accepts but the writer cannot open: it writes the sanitized name, and
// here a folder already has that name.
TEST(ExportCommandTest, UnwritableTargetGivesWriteError)
{
    const struct {
        const char* typed;
        const char* folder;
    } cases[] = {
        {"My Font.cpp", "My_Font.cpp"}, // the source
        {"Font.cpp", "Font.h"},         // the header
    };
    Probe().Font()->LoadFace(kDejaVuSans);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        TempDir dir;
        fs::create_directory(dir.Path() / c.folder);
        DialogCatcher dialogs;
        dialogs.answer = SaveAs(dir.Path() / c.typed);
        PressExport(dialogs);

        ASSERT_EQ(dialogs.seen.size(), 2u);
        ExpectSaveDialog(dialogs.seen[0]);
        dialogs.seen.erase(dialogs.seen.begin());
        ExpectOneErrorBox(dialogs, "Error writing file !");
    }
}

// GTK's dialog refuses a folder that does not exist; one removed after it was chosen
// (by another program, while the dialog closed) reaches the writer.
TEST(ExportCommandTest, FolderGoneAfterTheChoiceGivesWriteError)
{
    TempDir dir;
    const fs::path folder = dir.Path() / "out";
    fs::create_directory(folder);
    Probe().Font()->LoadFace(kDejaVuSans);
    DialogCatcher dialogs;
    auto saveAs = SaveAs(folder / "Font.cpp");
    dialogs.answer = [saveAs, folder](wxDialog& dialog) {
        dialog.Bind(wxEVT_SHOW, [folder](wxShowEvent& event) {
            event.Skip();
            if (!event.IsShown())
                fs::remove_all(folder);
        });
        return saveAs(dialog);
    };
    PressExport(dialogs);

    ASSERT_EQ(dialogs.seen.size(), 2u);
    dialogs.seen.erase(dialogs.seen.begin());
    ExpectOneErrorBox(dialogs, "Error writing file !");
    EXPECT_FALSE(fs::exists(folder));
}

TEST(ExportCommandTest, GlyphFreeTypeCannotLoadIsShownInTheErrorBox)
{
    TempDir fontDir;
    Probe().Font()->LoadFace(FontWithBrokenGlyph(kDejaVuSans, fontDir.Path(), 'B').c_str());
    EnterCharacters("65-67", {65, 66, 67});
    TempDir dir;
    DialogCatcher dialogs;
    dialogs.answer = SaveAs(dir.Path() / "Font.cpp");
    PressExport(dialogs);

    ASSERT_EQ(dialogs.seen.size(), 2u);
    dialogs.seen.erase(dialogs.seen.begin());
    ExpectOneErrorBox(dialogs, "cannot load glyph");
    EXPECT_FALSE(fs::exists(dir.Path() / "Font.h")) << "no header for a broken source";
    EXPECT_TRUE(Window().IsShown());
}

} // namespace
