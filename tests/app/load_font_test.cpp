// File > Load Font: the open dialog, the face it loads, and what stays as it was.
#include "gui_test_support.h"

#include "raster/ft_font.h"

#include <gtest/gtest.h>
#include <wx/eventfilter.h>
#include <wx/filedlg.h>
#include <wx/msgdlg.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

const char* const kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const char* const kTerminusOtb = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";

GuiMain& Window()
{
    GuiMain* window = guitest::MainWindow();
    if (window == nullptr)
        throw std::runtime_error("no main window");
    return *window;
}

std::string FamilyName(const FTFont& font)
{
    if (!font.HasFace() || font.Face()->family_name == nullptr)
        return {};
    return font.Face()->family_name;
}

// Counts the paint events of one window from now on.
class PaintCounter : public wxEventFilter
{
public:
    explicit PaintCounter(wxWindow* target) : target(target) { wxEvtHandler::AddFilter(this); }
    ~PaintCounter() override { wxEvtHandler::RemoveFilter(this); }

    int FilterEvent(wxEvent& event) override
    {
        if (event.GetEventType() == wxEVT_PAINT && event.GetEventObject() == target)
            ++count;
        return Event_Skip;
    }

    int count = 0;

private:
    wxWindow* target;
};

// What a command must leave alone: the two fields and the parsed list.
struct WindowFields
{
    wxString height;
    wxString chars;
    CharCodeList codes;

    static WindowFields Of(GuiMain& window)
    {
        GuiMainProbe probe(window);
        return {probe.HeightCtrl()->GetValue(), probe.CharsCtrl()->GetValue(), probe.CharCodes()};
    }
    bool operator==(const WindowFields&) const = default;
};

// The dialogs' parents, recorded while they are answered.
struct ParentLog
{
    std::vector<wxWindow*> parents;

    std::function<int(wxDialog&)> Around(std::function<int(wxDialog&)> answer)
    {
        return [this, answer](wxDialog& dialog) {
            parents.push_back(dialog.GetParent());
            return answer(dialog);
        };
    }
};

// A folder of its own under the temporary directory, removed with the object.
class TempDir
{
public:
    TempDir()
    {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") +
                              "/veltrane-load-font.XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot create a temporary folder");
        path = pattern;
    }
    ~TempDir() { std::filesystem::remove_all(path); }

    std::string path;
};

TEST(LoadFontTest, AsksForAnExistingTtfFileOverTheMainWindow)
{
    GuiMain& window = Window();
    DialogCatcher dialogs;
    ParentLog log;
    dialogs.answer = log.Around([](wxDialog&) { return int(wxID_CANCEL); });
    guitest::ChooseMenuItem(window, ID_LOAD_FONT);

    ASSERT_EQ(dialogs.seen.size(), 1u);
    const DialogCatcher::Seen& chooser = dialogs.seen[0];
    EXPECT_EQ(chooser.className, "wxFileDialog");
    EXPECT_EQ(chooser.message, "Choose File to Load Font From");
    EXPECT_EQ(chooser.wildcard, "Font File (*.ttf)|*.ttf");
    const long fileDialogFlags = wxFD_OPEN | wxFD_SAVE | wxFD_OVERWRITE_PROMPT | wxFD_NO_FOLLOW |
                                 wxFD_FILE_MUST_EXIST | wxFD_MULTIPLE | wxFD_CHANGE_DIR |
                                 wxFD_PREVIEW | wxFD_SHOW_HIDDEN;
    EXPECT_EQ(chooser.style & fileDialogFlags, 0x11) << "open dialog, existing files only";
    EXPECT_EQ(log.parents, std::vector<wxWindow*>{&window});
}

// Table: a TrueType file, then a bitmap font with another ending typed past the filter;
// each one replaces the face and leaves fields and list alone.
TEST(LoadFontTest, CtrlLLoadsTheFileTypedIntoTheDialog)
{
    GuiMain& window = Window();
    FTFont& font = *GuiMainProbe(window).Font();
    ASSERT_FALSE(font.HasFace());
    const WindowFields before = WindowFields::Of(window);
    const struct
    {
        const char* path;
        const char* family;
    } cases[] = {
        {kDejaVuSans, "DejaVu Sans"},
        {kTerminusOtb, "Terminus"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        DialogCatcher dialogs;
        dialogs.answer = guitest::ChooseFile(c.path);
        ASSERT_TRUE(guitest::FocusWindow(window.GetTitle()));
        wxUIActionSimulator keys;
        keys.Char('l', wxMOD_CONTROL);
        EXPECT_TRUE(guitest::WaitFor([&] { return FamilyName(font) == c.family; }))
            << "face now: '" << FamilyName(font) << "'";
        ASSERT_EQ(dialogs.seen.size(), 1u) << "no error box";
        EXPECT_EQ(dialogs.seen[0].message, "Choose File to Load Font From");
        EXPECT_TRUE(WindowFields::Of(window) == before);
    }
}

TEST(LoadFontTest, FileFreeTypeCannotReadShowsTheErrorAndKeepsTheFace)
{
    GuiMain& window = Window();
    FTFont& font = *GuiMainProbe(window).Font();
    font.LoadFace(kDejaVuSans);
    const FT_Face earlier = font.Face();

    TempDir dir;
    const std::string bad = dir.path + "/bad.ttf";
    FILE* file = std::fopen(bad.c_str(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("This is a text file, not a font.\n", file);
    std::fclose(file);

    DialogCatcher dialogs;
    ParentLog log;
    const auto chooseBad = guitest::ChooseFile(bad);
    dialogs.answer = log.Around([&](wxDialog& dialog) {
        return dynamic_cast<wxFileDialog*>(&dialog) != nullptr ? chooseBad(dialog) : int(wxID_OK);
    });
    guitest::ChooseMenuItem(window, ID_LOAD_FONT);

    ASSERT_EQ(dialogs.seen.size(), 2u);
    const DialogCatcher::Seen& box = dialogs.seen[1];
    EXPECT_EQ(box.className, "wxMessageDialog");
    EXPECT_EQ(box.title, "Error");
    EXPECT_EQ(box.message, "cannot load font file");
    EXPECT_EQ(box.style, wxOK | wxICON_ERROR) << "one OK button, error icon, not centred";
    EXPECT_EQ(log.parents, (std::vector<wxWindow*>{&window, &window}));
    EXPECT_EQ(font.Face(), earlier) << "the earlier face stays in use";
    EXPECT_EQ(FamilyName(font), "DejaVu Sans");
}

TEST(LoadFontTest, CancelChangesNothingButRepaints)
{
    GuiMain& window = Window();
    GuiMainProbe probe(window);
    FTFont& font = *probe.Font();
    font.LoadFace(kDejaVuSans);
    const FT_Face earlier = font.Face();
    // Edited but not entered: loading must neither parse nor reset the fields.
    probe.HeightCtrl()->ChangeValue("20");
    probe.CharsCtrl()->ChangeValue("65");
    const WindowFields before = WindowFields::Of(window);

    guitest::ProcessEvents(); // paints still due from start-up
    PaintCounter paints(probe.Preview());

    DialogCatcher dialogs;
    dialogs.answer = [](wxDialog&) { return int(wxID_CANCEL); };
    guitest::ChooseMenuItem(window, ID_LOAD_FONT);

    EXPECT_EQ(dialogs.seen.size(), 1u) << "no error box";
    EXPECT_EQ(font.Face(), earlier);
    EXPECT_TRUE(WindowFields::Of(window) == before);
    EXPECT_TRUE(guitest::WaitFor([&] { return paints.count > 0; })) << "the preview is repainted";
}

} // namespace
