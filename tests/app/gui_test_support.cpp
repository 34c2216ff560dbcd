#include "gui_test_support.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/uiaction.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <memory>
#include <thread>

namespace guitest {

GuiMain* MainWindow()
{
    if (wxTheApp == nullptr)
        return nullptr;
    return dynamic_cast<GuiMain*>(wxTheApp->GetTopWindow());
}

void ProcessEvents()
{
    wxTheApp->ProcessPendingEvents();
    while (wxTheApp->Pending())
        wxTheApp->Dispatch();
    wxTheApp->ProcessIdle(); // also deletes windows that were destroyed
}

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        ProcessEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

void ChooseMenuItem(GuiMain& window, int id)
{
    wxCommandEvent event(wxEVT_MENU, id);
    event.SetEventObject(&window);
    window.ProcessWindowEvent(event);
}

void ClickButton(wxButton& button)
{
    wxCommandEvent event(wxEVT_BUTTON, button.GetId());
    event.SetEventObject(&button);
    button.ProcessWindowEvent(event);
}

namespace {

Display* XDisplay()
{
    static Display* display = XOpenDisplay(nullptr);
    return display;
}

wxString WindowName(Display* display, Window window)
{
    XTextProperty property{};
    if (XGetWMName(display, window, &property) == 0 || property.value == nullptr)
        return {};
    char** list = nullptr;
    int count = 0;
    wxString name;
    if (Xutf8TextPropertyToTextList(display, &property, &list, &count) == Success && count > 0)
        name = wxString::FromUTF8(list[0]);
    if (list != nullptr)
        XFreeStringList(list);
    XFree(property.value);
    return name;
}

// The shown top-level X window with this title, or 0.
Window FindShownWindow(Display* display, const wxString& title)
{
    Window root = 0, parent = 0, *children = nullptr;
    unsigned int count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0)
        return 0;
    Window found = 0;
    for (unsigned int i = 0; i < count && found == 0; ++i) {
        XWindowAttributes attributes{};
        if (XGetWindowAttributes(display, children[i], &attributes) != 0 &&
            attributes.map_state == IsViewable && WindowName(display, children[i]) == title)
            found = children[i];
    }
    if (children != nullptr)
        XFree(children);
    return found;
}

void TypeIntoFileDialog(wxDialog& dialog, const wxString& title, const wxString& path)
{
    if (!FocusWindow(title)) {
        ADD_FAILURE() << "the file dialog '" << title << "' did not get the keyboard focus";
        return;
    }
    wxUIActionSimulator keys;
    keys.Char('l', wxMOD_CONTROL); // open the location field (open dialogs)
    keys.Char('a', wxMOD_CONTROL); // replace whatever the field holds
    keys.Text(path.utf8_str());
    // The field's completion popup may swallow an Enter: press it until the dialog closes.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    do {
        keys.Char(WXK_RETURN);
        if (WaitFor([&] { return !dialog.IsShown(); }, std::chrono::milliseconds(250)))
            return;
    } while (std::chrono::steady_clock::now() < deadline);
    ADD_FAILURE() << "the file dialog did not accept " << path;
    keys.Char(WXK_ESCAPE);
    keys.Char(WXK_ESCAPE);
}

} // namespace

bool FocusWindow(const wxString& title)
{
    Display* display = XDisplay();
    if (display == nullptr)
        return false;
    Window window = 0;
    if (!WaitFor([&] { return (window = FindShownWindow(display, title)) != 0; }))
        return false;
    XSetInputFocus(display, window, RevertToParent, CurrentTime);
    XSync(display, False);
    // Let the toolkit see the focus change before keys arrive.
    return WaitFor([&] {
        Window focus = 0;
        int revert = 0;
        XGetInputFocus(display, &focus, &revert);
        return focus == window;
    });
}

std::function<int(wxDialog&)> ChooseFile(const wxString& path)
{
    return [path](wxDialog& dialog) {
        // GTK's dialog reports the folder it shows as the chosen directory.
        static_cast<wxFileDialog&>(dialog).SetDirectory(wxPathOnly(path));
        auto typed = std::make_shared<bool>(false);
        dialog.Bind(wxEVT_SHOW, [&dialog, path, typed](wxShowEvent& event) {
            event.Skip();
            if (!event.IsShown() || *typed)
                return;
            *typed = true;
            // GTK titles the dialog with its message.
            const wxString title = static_cast<wxFileDialog&>(dialog).GetMessage();
            dialog.CallAfter([&dialog, title, path] { TypeIntoFileDialog(dialog, title, path); });
        });
        return int(wxID_NONE);
    };
}

} // namespace guitest

DialogCatcher::DialogCatcher()
{
    Register();
}

DialogCatcher::~DialogCatcher()
{
    Unregister();
}

int DialogCatcher::Enter(wxDialog* dialog)
{
    if (std::find(shown.begin(), shown.end(), dialog) != shown.end())
        return wxID_NONE;
    Seen entry;
    entry.className = dialog->GetClassInfo()->GetClassName();
    entry.title = dialog->GetTitle();
    entry.style = dialog->GetWindowStyle();
    if (auto* chooser = dynamic_cast<wxFileDialogBase*>(dialog)) {
        entry.message = chooser->GetMessage();
        entry.wildcard = chooser->GetWildcard();
    }
    if (auto* box = dynamic_cast<wxMessageDialogBase*>(dialog)) {
        entry.message = box->GetMessage();
        entry.style = box->GetMessageDialogStyle();
    }
    seen.push_back(entry);
    const int result = answer(*dialog);
    if (result == wxID_NONE)
        shown.push_back(dialog);
    return result;
}

void DialogCatcher::Exit(wxDialog* dialog)
{
    const auto found = std::find(shown.begin(), shown.end(), dialog);
    if (found != shown.end())
        shown.erase(found);
}
