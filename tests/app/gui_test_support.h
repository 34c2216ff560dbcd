#pragma once

// In-process GUI tests: gui_test_main.cpp starts the real GuiApplication (its OnInit
// builds and shows the main window) inside its own X server before each test program's
// tests run, one program per test, so every test starts from a fresh window.

#include "app/gui_main.h"

#include <wx/modalhook.h>
#include <wx/string.h>

#include <chrono>
#include <functional>
#include <vector>

class FTFont;
class wxButton;
class wxDialog;
class wxMenuBar;
class wxTextCtrl;

namespace guitest {

// The main window opened by start-up; null once it is gone.
GuiMain* MainWindow();

// Dispatches every pending event (paints, idle work, delayed deletes), then returns.
void ProcessEvents();

// Pumps events until `condition` holds or the deadline passes; returns the condition.
bool WaitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds deadline = std::chrono::seconds(5));

// Runs a command as the toolkit would on a menu choice or a button click.
void ChooseMenuItem(GuiMain& window, int id);
void ClickButton(wxButton& button);

// Gives the keyboard focus to the shown top-level window with this title, as a click
// on it would; wxUIActionSimulator's keys then reach it. False when no such window shows.
bool FocusWindow(const wxString& title);

// An answer for DialogCatcher that picks `path` in the real GTK file dialog, as a user
// would: the dialog opens in the file's folder, the path is typed into its location
// field and Enter is pressed. The program then reads the choice with GetPath,
// GetFilename and GetDirectory as usual. (Setting the path without showing the dialog
// leaves GetPath empty on GTK, hence the real dialog.) A dialog that refuses the path,
// e.g. an open dialog given a missing file, is cancelled after a while and the test fails.
std::function<int(wxDialog&)> ChooseFile(const wxString& path);

} // namespace guitest

// Read access to the main window's fields, for checks only.
class GuiMainProbe
{
public:
    explicit GuiMainProbe(GuiMain& window) : w(window) {}

    FTFont* Font() const { return w.m_font; }
    wxMenuBar* MenuBar() const { return w.m_menuBar; }
    wxButton* ExportButton() const { return w.m_exportButton; }
    wxTextCtrl* HeightCtrl() const { return w.m_heightCtrl; }
    wxTextCtrl* CharsCtrl() const { return w.m_charsCtrl; }
    wxWindow* Preview() const { return w.m_preview; }
    const CharCodeList& CharCodes() const { return w.m_charCodes; }

private:
    GuiMain& w;
};

// While it exists, every modal dialog (message boxes, file dialogs) is recorded and
// ShowModal returns what `answer` gives, without showing the dialog. An answer of
// wxID_NONE shows the dialog after all (see guitest::ChooseFile).
class DialogCatcher : public wxModalDialogHook
{
public:
    struct Seen
    {
        wxString className; // e.g. "wxMessageDialog", "wxFileDialog"
        wxString title;
        wxString message;   // message boxes and file dialogs
        wxString wildcard;  // file dialogs only
        long style = 0;     // wxMessageDialog: GetMessageDialogStyle(); others: GetWindowStyle()
    };

    DialogCatcher();
    ~DialogCatcher() override;

    std::function<int(wxDialog&)> answer = [](wxDialog&) { return int(wxID_OK); };
    std::vector<Seen> seen;

protected:
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

private:
    // GTK's file dialog passes the hook twice when shown; count it once.
    std::vector<wxDialog*> shown;
};
