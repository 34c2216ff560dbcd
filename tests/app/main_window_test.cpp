// The main window as start-up builds it, the About box and Quit.
#include "gui_test_support.h"

#include "app/libc_text.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/menu.h>
#include <wx/statbox.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <memory>

namespace {

TEST(MainWindowTest, TitleIdsMenusAndLayout)
{
    GuiMain& window = *guitest::MainWindow();
    GuiMainProbe probe(window);
    EXPECT_EQ(window.GetTitle(), "Veltrane Bitmap Font Generator v1.00");
    EXPECT_EQ(window.GetIcons().GetIconByIndex(0).GetWidth(), 128);
    EXPECT_EQ(window.FindWindow(6001), probe.HeightCtrl());
    EXPECT_EQ(window.FindWindow(6002), probe.CharsCtrl());
    EXPECT_EQ(window.FindWindow(6003), probe.ExportButton());
    EXPECT_EQ(probe.ExportButton()->GetLabel(), "Export");

    wxMenuBar* bar = window.GetMenuBar();
    ASSERT_EQ(bar->GetMenuCount(), 2u);
    EXPECT_EQ(bar->GetMenuLabel(0) + bar->GetMenuLabel(1), "&File&Help");
    EXPECT_EQ(bar->GetMenu(0)->GetMenuItemCount() + 10 * bar->GetMenu(1)->GetMenuItemCount(), 12u);
    const struct
    {
        int id;
        size_t menu;
        const char* label;
        const char* accel;
    } items[] = {{6000, 0, "&Load Font", "Ctrl+L"}, {wxID_EXIT, 0, "&Quit", "Ctrl+Q"}, {wxID_ABOUT, 1, "&About", ""}};
    for (const auto& item : items) {
        wxMenuItem* found = bar->GetMenu(item.menu)->FindItem(item.id);
        ASSERT_NE(found, nullptr) << item.label;
        EXPECT_EQ(found->GetItemLabel().BeforeFirst('\t'), item.label);
        std::unique_ptr<wxAcceleratorEntry> accel(found->GetAccel());
        EXPECT_EQ(accel ? accel->ToString() : wxString(), item.accel) << item.label;
    }

    // The "Font Configuration" column on the left, the 800 x 600 preview right of it.
    const wxRect preview = probe.Preview()->GetRect();
    EXPECT_EQ(preview.GetSize(), wxSize(800, 600));
    EXPECT_EQ(preview.GetRight() + 1 + 5, window.GetClientSize().x) << "5-pixel border";
    wxStaticBox* box = nullptr;
    for (wxWindow* child : window.GetChildren())
        box = box ? box : dynamic_cast<wxStaticBox*>(child);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->GetLabel(), "Font Configuration");
    EXPECT_LT(box->GetRect().GetRight(), preview.x);
    for (wxWindow* control :
         {(wxWindow*)probe.HeightCtrl(), (wxWindow*)probe.CharsCtrl(), (wxWindow*)probe.ExportButton()})
        EXPECT_TRUE(box->GetRect().Contains(control->GetRect())) << control->GetName();

    // Only the preview and the characters field grow with the window.
    const wxRect chars = probe.CharsCtrl()->GetRect();
    const wxPoint button = probe.ExportButton()->GetPosition();
    window.SetClientSize(window.GetClientSize() + wxSize(100, 80));
    window.Layout();
    EXPECT_EQ(probe.Preview()->GetSize(), preview.GetSize() + wxSize(100, 80));
    EXPECT_EQ(probe.CharsCtrl()->GetSize(), chars.GetSize() + wxSize(0, 80));
    EXPECT_EQ(probe.ExportButton()->GetPosition(), button + wxPoint(0, 80));

    // Start-up adopts the user's LC_CTYPE (the harness runs in C.UTF-8), so non-ASCII
    // texts reach the C library in the user's encoding.
    const char* const utf8 = "/tmp/Schrift \xc3\xa4\xe2\x82\xac.ttf";
    EXPECT_EQ(ToLibcText(wxString::FromUTF8(utf8)), utf8);
}

TEST(MainWindowTest, AboutShowsTheTitleAndOneLineAboutTheTool)
{
    DialogCatcher dialogs;
    wxCommandEvent about(wxEVT_MENU, wxID_ABOUT);
    guitest::MainWindow()->ProcessWindowEvent(about);
    ASSERT_EQ(dialogs.seen.size(), 1u);
    const DialogCatcher::Seen& box = dialogs.seen[0];
    EXPECT_EQ(std::vector<wxString>({box.className, box.title, box.message.BeforeFirst('\n')}),
              std::vector<wxString>({"wxMessageDialog", "About", "Veltrane Bitmap Font Generator v1.00"}));
    EXPECT_EQ(box.message.Freq('\n'), 1) << "exactly two lines";
    EXPECT_EQ(box.style & (wxOK | wxCANCEL | wxYES_NO | wxHELP), wxOK);
}

TEST(MainWindowTest, CtrlQClosesTheWindow)
{
    ASSERT_TRUE(guitest::FocusWindow(guitest::MainWindow()->GetTitle()));
    wxUIActionSimulator().Char('q', wxMOD_CONTROL);
    EXPECT_TRUE(guitest::WaitFor([] { return guitest::MainWindow() == nullptr; }));
}

} // namespace
