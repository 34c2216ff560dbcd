#include "app/gui_main.h"

#include "app/libc_text.h"
#include "resources/window_icon_png.h"

#include <wx/bitmap.h>
#include <wx/button.h>
#include <wx/icon.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace {

// The default frame without a resize border: the layout fixes the window's size.
constexpr long FRAME_STYLE = wxDEFAULT_FRAME_STYLE & ~wxRESIZE_BORDER;
constexpr int BORDER = 5;

wxStaticText* NewLabel(wxWindow* parent, const wxString& text)
{
    return new wxStaticText(parent, wxID_ANY, text, wxDefaultPosition, wxDefaultSize, 0);
}

} // namespace

// Every handler is bound at run time; the static table stays empty.
wxBEGIN_EVENT_TABLE(GuiMain, wxFrame)
wxEND_EVENT_TABLE()

GuiMain::GuiMain(const wxString& title, FTFont* font)
    : wxFrame(nullptr, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, FRAME_STYLE), m_font(font)
{
    wxIcon icon;
    icon.CopyFromBitmap(wxBitmap::NewFromPNGData(WINDOW_ICON_PNG, sizeof(WINDOW_ICON_PNG)));
    SetIcon(icon);

    m_menuBar = new wxMenuBar;
    wxMenu* fileMenu = new wxMenu;
    fileMenu->Append(ID_LOAD_FONT, "&Load Font\tCtrl-l", "", wxITEM_NORMAL);
    fileMenu->Append(wxID_EXIT, "&Quit\tCtrl-q", "", wxITEM_NORMAL);
    m_menuBar->Append(fileMenu, "&File");
    wxMenu* helpMenu = new wxMenu;
    helpMenu->Append(wxID_ABOUT, "&About", "", wxITEM_NORMAL);
    m_menuBar->Append(helpMenu, "&Help");
    SetMenuBar(m_menuBar);

    // Some items name an alignment along their box's own direction, which box sizers
    // ignore; without this the toolkit asserts about each of them at every start.
    wxSizerFlags::DisableConsistencyChecks();

    wxBoxSizer* topSizer = new wxBoxSizer(wxHORIZONTAL);
    SetSizer(topSizer, true);

    // All controls are the frame's children, also those shown inside the static box.
    wxStaticBoxSizer* configSizer = new wxStaticBoxSizer(wxVERTICAL, this, "Font Configuration");

    wxBoxSizer* heightRow = new wxBoxSizer(wxHORIZONTAL);
    heightRow->Add(NewLabel(this, "Font Height"), 0, wxALL | wxALIGN_RIGHT | wxALIGN_CENTER_VERTICAL, BORDER);
    m_heightCtrl = new wxTextCtrl(this, ID_FONT_HEIGHT, "", wxDefaultPosition, wxDefaultSize, 0);
    m_heightCtrl->SetValue("16");
    heightRow->Add(m_heightCtrl, 0, wxALL, BORDER);
    heightRow->Add(NewLabel(this, "px"), 0, wxALL | wxALIGN_CENTER_VERTICAL, BORDER);
    configSizer->Add(heightRow, 0, wxALL | wxALIGN_CENTER_VERTICAL, BORDER);

    configSizer->Add(NewLabel(this, "Characters to convert"), 0, wxALL | wxALIGN_CENTER_VERTICAL, BORDER);
    m_charsCtrl =
        new wxTextCtrl(this, ID_CHARACTERS, "", wxDefaultPosition, wxDefaultSize, wxTE_MULTILINE | wxTE_PROCESS_ENTER);
    m_charsCtrl->SetValue("32-126");
    configSizer->Add(m_charsCtrl, 1, wxEXPAND | wxALL, BORDER);

    m_exportButton = new wxButton(this, ID_EXPORT, "Export", wxDefaultPosition, wxSize(120, 40), 0);
    configSizer->Add(m_exportButton, 0, wxALL | wxALIGN_CENTER_HORIZONTAL, BORDER);
    topSizer->Add(configSizer, 0, wxEXPAND | wxALL, BORDER);

    m_preview = new wxWindow(this, wxID_ANY, wxDefaultPosition, wxSize(800, 600), 0);
    topSizer->Add(m_preview, 1, wxEXPAND | wxALL, BORDER);

    topSizer->SetSizeHints(this);
    Centre(wxBOTH);

    Bind(wxEVT_MENU, &GuiMain::OnQuit, this, wxID_EXIT);
    Bind(wxEVT_MENU, &GuiMain::OnAbout, this, wxID_ABOUT);
    Bind(wxEVT_MENU, &GuiMain::OnLoadFont, this, ID_LOAD_FONT);
    Bind(wxEVT_CLOSE_WINDOW, &GuiMain::OnClose, this);
    Bind(wxEVT_TEXT_ENTER, &GuiMain::OnCharsEnter, this, ID_CHARACTERS);
    Bind(wxEVT_BUTTON, &GuiMain::OnExport, this, ID_EXPORT);
    m_preview->Bind(wxEVT_PAINT, &GuiMain::OnPaintPreview, this);

    // Not shown yet, so nothing to repaint.
    ParseCharCodes(ToLibcText(m_charsCtrl->GetValue()));
}

GuiMain::~GuiMain() = default;

void GuiMain::OnQuit(wxCommandEvent&)
{
    Close(true);
}

void GuiMain::OnClose(wxCloseEvent&)
{
    Destroy();
}
