// The main window as start-up builds it: title, fields, menus, ids and layout.
#include "gui_test_support.h"

#include "app/app_texts.h"

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/menu.h>
#include <wx/statbox.h>
#include <wx/textctrl.h>

namespace {

GuiMain& Window()
{
    GuiMain* window = guitest::MainWindow();
    if (window == nullptr)
        throw std::runtime_error("no main window");
    return *window;
}

TEST(MainWindowTest, StartsShownWithTheProgramTitle)
{
    GuiMain& window = Window();
    EXPECT_TRUE(window.IsShown());
    EXPECT_EQ(window.GetTitle(), "Veltrane Bitmap Font Generator v1.00");
    EXPECT_EQ(g_appTitle, window.GetTitle());
}

TEST(MainWindowTest, FieldsHoldTheirDefaults)
{
    GuiMainProbe probe(Window());
    EXPECT_EQ(probe.HeightCtrl()->GetValue(), "16");
    EXPECT_EQ(probe.CharsCtrl()->GetValue(), "32-126");
    EXPECT_TRUE(probe.CharsCtrl()->IsMultiLine());
    EXPECT_TRUE(probe.CharsCtrl()->HasFlag(wxTE_PROCESS_ENTER));
    EXPECT_FALSE(probe.HeightCtrl()->IsMultiLine());
    EXPECT_EQ(probe.ExportButton()->GetLabel(), "Export");
    EXPECT_NE(probe.Font(), nullptr);
}

TEST(MainWindowTest, WindowsCarryTheirIds)
{
    GuiMain& window = Window();
    GuiMainProbe probe(window);
    const struct
    {
        int id;
        wxWindow* expected;
    } cases[] = {
        {6001, probe.HeightCtrl()},
        {6002, probe.CharsCtrl()},
        {6003, probe.ExportButton()},
    };
    for (const auto& c : cases)
        EXPECT_EQ(window.FindWindow(c.id), c.expected) << "id " << c.id;
    EXPECT_LT(probe.Preview()->GetId(), 0) << "the preview has no id of its own";
}

TEST(MainWindowTest, MenusHoldTheCommandsWithTheirAccelerators)
{
    wxMenuBar* bar = GuiMainProbe(Window()).MenuBar();
    ASSERT_EQ(bar, Window().GetMenuBar());
    ASSERT_EQ(bar->GetMenuCount(), 2u);
    EXPECT_EQ(bar->GetMenuLabel(0), "&File");
    EXPECT_EQ(bar->GetMenuLabel(1), "&Help");
    EXPECT_EQ(bar->GetMenu(0)->GetMenuItemCount(), 2u);
    EXPECT_EQ(bar->GetMenu(1)->GetMenuItemCount(), 1u);

    const struct
    {
        int id;
        size_t menu;
        const char* label;
        int accelKey; // 0: no accelerator
    } cases[] = {
        {6000, 0, "&Load Font", 'L'},
        {wxID_EXIT, 0, "&Quit", 'Q'},
        {wxID_ABOUT, 1, "&About", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        wxMenuItem* item = bar->GetMenu(c.menu)->FindItem(c.id);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->GetItemLabel().BeforeFirst('\t'), c.label);
        EXPECT_EQ(item->GetKind(), wxITEM_NORMAL);
        wxAcceleratorEntry* accel = item->GetAccel();
        if (c.accelKey == 0) {
            EXPECT_EQ(accel, nullptr);
        } else {
            ASSERT_NE(accel, nullptr);
            EXPECT_EQ(accel->GetKeyCode(), c.accelKey);
            EXPECT_EQ(accel->GetFlags(), wxACCEL_CTRL);
        }
        delete accel;
    }
}

TEST(MainWindowTest, FrameHasNoResizeBorder)
{
    const long style = Window().GetWindowStyleFlag();
    EXPECT_FALSE(style & wxRESIZE_BORDER);
    EXPECT_TRUE(style & wxMAXIMIZE_BOX);
    EXPECT_TRUE(style & wxCLOSE_BOX);
}

TEST(MainWindowTest, PreviewFillsTheRightOfTheConfigurationColumn)
{
    GuiMain& window = Window();
    GuiMainProbe probe(window);
    const wxRect preview = probe.Preview()->GetRect();
    EXPECT_GE(preview.width, 800);
    EXPECT_GE(preview.height, 600);
    EXPECT_EQ(preview.GetRight() + 1 + 5, window.GetClientSize().x) << "5-pixel border at the right";
    EXPECT_EQ(preview.y, 5);

    wxStaticBox* box = nullptr;
    for (wxWindow* child : window.GetChildren())
        if ((box = dynamic_cast<wxStaticBox*>(child)) != nullptr)
            break;
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->GetLabel(), "Font Configuration");
    EXPECT_EQ(box->GetRect().x, 5);
    EXPECT_LT(box->GetRect().GetRight(), preview.x);
    for (wxWindow* control : {(wxWindow*)probe.HeightCtrl(), (wxWindow*)probe.CharsCtrl(),
                              (wxWindow*)probe.ExportButton()}) {
        EXPECT_EQ(control->GetParent(), &window);
        EXPECT_TRUE(box->GetRect().Contains(control->GetRect())) << control->GetName();
    }
    EXPECT_GE(probe.ExportButton()->GetSize().x, 120);
    EXPECT_GE(probe.ExportButton()->GetSize().y, 40);
}

TEST(MainWindowTest, OnlyPreviewAndCharactersFieldGrowWithTheWindow)
{
    GuiMain& window = Window();
    GuiMainProbe probe(window);
    const wxRect preview = probe.Preview()->GetRect();
    const wxRect chars = probe.CharsCtrl()->GetRect();
    const wxRect button = probe.ExportButton()->GetRect();

    window.SetClientSize(window.GetClientSize() + wxSize(100, 80));
    window.Layout();

    EXPECT_EQ(probe.Preview()->GetSize(), preview.GetSize() + wxSize(100, 80));
    EXPECT_EQ(probe.CharsCtrl()->GetSize(), chars.GetSize() + wxSize(0, 80));
    EXPECT_EQ(probe.ExportButton()->GetPosition(), button.GetPosition() + wxPoint(0, 80));
}

} // namespace
