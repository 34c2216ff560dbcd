#pragma once
// In-process GUI tests: gui_test_main.cpp starts the real GuiApplication inside an X server
// of its own, one process per test, so every test starts from a fresh window.

#include "app/gui_main.h"

#include <wx/modalhook.h>
#include <wx/string.h>

#include <chrono>
#include <functional>
#include <vector>

class FTFont;

namespace guitest {

// The main window opened by start-up; null once it is gone.
GuiMain* MainWindow();
// Dispatches every pending event (paints, idle work, delayed deletes).
void ProcessEvents();
// Pumps events until `condition` holds or the deadline passes; returns the condition.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline = std::chrono::seconds(5));
// Gives the keyboard focus to the shown top-level window with this title, as a click would.
bool FocusWindow(const wxString& title);
// Replaces the field's text by typing, as a user who empties it and types.
void TypeInto(wxTextCtrl& field, const wxString& text);
// A DialogCatcher answer that types `path` into the real GTK file dialog, then presses Enter
// (accept) or Escape; the program reads the choice with GetPath as usual.
std::function<int(wxDialog&)> ChooseFile(const wxString& path, bool accept = true);

} // namespace guitest

// Read access to the main window's fields, for checks only.
class GuiMainProbe
{
public:
    explicit GuiMainProbe(GuiMain& window) : w(window) {}
    FTFont* Font() const { return w.m_font; }
    wxButton* ExportButton() const { return w.m_exportButton; }
    wxTextCtrl* HeightCtrl() const { return w.m_heightCtrl; }
    wxTextCtrl* CharsCtrl() const { return w.m_charsCtrl; }
    wxWindow* Preview() const { return w.m_preview; }
    const CharCodeList& CharCodes() const { return w.m_charCodes; }

private:
    GuiMain& w;
};

// While it exists, every modal dialog is recorded and ShowModal returns what `answer` gives,
// without showing the dialog; an answer of wxID_NONE shows it after all (see ChooseFile).
class DialogCatcher : public wxModalDialogHook
{
public:
    struct Seen
    {
        wxString className, title, message, wildcard;
        long style = 0; // message boxes: GetMessageDialogStyle(); others: GetWindowStyle()
    };

    DialogCatcher() { Register(); }
    ~DialogCatcher() override { Unregister(); }

    std::function<int(wxDialog&)> answer = [](wxDialog&) {
        return int(wxID_OK);
    };
    std::vector<Seen> seen;

protected:
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

private:
    // GTK's file dialog passes the hook twice when shown; count it once.
    std::vector<wxDialog*> shown;
};
