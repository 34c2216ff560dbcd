#pragma once

#include "charset/char_code_list.h"
#include "raster/preview_bitmap.h"

#include <wx/defs.h>
#include <wx/frame.h>

#include <cstdint>
#include <string>

class FTFont;
class wxButton;
class wxMenuBar;
class wxTextCtrl;

// Window ids of the main window's own commands and fields: the first ids above the
// toolkit's reserved range.
enum
{
    ID_LOAD_FONT = wxID_HIGHEST + 1,
    ID_FONT_HEIGHT,
    ID_CHARACTERS,
    ID_EXPORT,
};
static_assert(ID_LOAD_FONT == 6000 && ID_EXPORT == 6003);

// The one top-level window: menus, the "Font Configuration" column and the glyph
// preview. Every command is one of its handlers, bound in the constructor.
class GuiMain : public wxFrame
{
public:
    // Builds the whole window without showing it; `font` is not owned and outlives it.
    GuiMain(const wxString& title, FTFont* font);
    ~GuiMain() override;

private:
    // Window and menu commands (gui_main.cpp, about_command.cpp)
    void OnQuit(wxCommandEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnAbout(wxCommandEvent& event);

    // Load-font command (load_font_command.cpp)
    void OnLoadFont(wxCommandEvent& event);

    // Characters field (characters_command.cpp)
    void OnCharsEnter(wxCommandEvent& event);
    void ParseCharCodes(const std::string& text);

    // Export command (export/desktop/export_command.cpp)
    void OnExport(wxCommandEvent& event);

    // Glyph preview (raster/preview_paint.cpp)
    void OnPaintPreview(wxPaintEvent& event);

    FTFont* m_font;
    wxMenuBar* m_menuBar = nullptr;
    wxButton* m_exportButton = nullptr;
    wxTextCtrl* m_heightCtrl = nullptr;
    wxTextCtrl* m_charsCtrl = nullptr;
    wxWindow* m_preview = nullptr;
    CharCodeList m_charCodes;
    PreviewComposer m_previewComposer; // keeps the preview's glyphs while the face stays
    PreviewBitmap m_previewBitmap;     // the preview's last picture, reused while unchanged

    // Lets the GUI tests read the window's state.
    friend class GuiMainProbe;

    wxDECLARE_EVENT_TABLE();
};
