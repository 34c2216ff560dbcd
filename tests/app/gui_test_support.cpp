#include "gui_test_support.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <thread>

namespace guitest {

GuiMain* MainWindow()
{
    return wxTheApp ? dynamic_cast<GuiMain*>(wxTheApp->GetTopWindow()) : nullptr;
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

bool FocusWindow(const wxString& title)
{
    // xdotool waits until the window has the focus; the toolkit may still have to map it.
    const std::string command = "timeout 5 xdotool search --onlyvisible --name '^" + std::string(title.utf8_str()) +
                                "$' windowfocus --sync >/dev/null 2>&1";
    return WaitFor([&] { return std::system(command.c_str()) == 0; });
}

void TypeInto(wxTextCtrl& field, const wxString& text)
{
    ASSERT_TRUE(FocusWindow(wxGetTopLevelParent(&field)->GetLabel()));
    field.SetFocus();
    ASSERT_TRUE(WaitFor([&] { return wxWindow::FindFocus() == &field; }));
    field.SelectAll();
    wxUIActionSimulator keys;
    keys.Char(WXK_DELETE);
    ASSERT_TRUE(WaitFor([&] { return field.IsEmpty(); }));
    keys.Text(text.utf8_str());
    ASSERT_TRUE(WaitFor([&] { return field.GetValue() == text; })) << "typed text did not arrive: " << field.GetValue();
}

std::function<int(wxDialog&)> ChooseFile(const wxString& path, bool accept)
{
    return [path, accept](wxDialog& dialog) {
        auto& chooser = static_cast<wxFileDialog&>(dialog);
        chooser.SetDirectory(wxPathOnly(path));
        auto typed = std::make_shared<bool>(false);
        chooser.Bind(wxEVT_SHOW, [&chooser, path, accept, typed](wxShowEvent& event) {
            event.Skip();
            if (!event.IsShown() || *typed)
                return;
            *typed = true;
            chooser.CallAfter([&chooser, path, accept] {
                // GTK titles the dialog with its message.
                ASSERT_TRUE(FocusWindow(chooser.GetMessage())) << "the file dialog got no focus";
                wxUIActionSimulator keys;
                keys.Char('l', wxMOD_CONTROL); // the location field
                keys.Char('a', wxMOD_CONTROL);
                keys.Text(path.utf8_str());
                // The field's completion popup may swallow the key: press it until the dialog closes.
                for (int tries = 0; tries < 20 && chooser.IsShown(); ++tries) {
                    keys.Char(accept ? WXK_RETURN : WXK_ESCAPE);
                    WaitFor([&] { return !chooser.IsShown(); }, std::chrono::milliseconds(250));
                }
                EXPECT_FALSE(chooser.IsShown()) << "the file dialog did not close after " << path;
            });
        });
        return int(wxID_NONE);
    };
}

} // namespace guitest

int DialogCatcher::Enter(wxDialog* dialog)
{
    if (std::find(shown.begin(), shown.end(), dialog) != shown.end())
        return wxID_NONE;
    Seen entry{dialog->GetClassInfo()->GetClassName(), dialog->GetTitle(), {}, {}, dialog->GetWindowStyle()};
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
    std::erase(shown, dialog);
}
