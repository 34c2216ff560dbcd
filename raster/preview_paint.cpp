#include "app/gui_main.h"

#include "raster/preview_image.h"

#include <wx/dcclient.h>

#include <algorithm>
#include <cstdio>

// Repaints the preview area from scratch: the listed glyphs are composed into one
// picture in memory, which is then drawn in a single call.
void GuiMain::OnPaintPreview(wxPaintEvent&)
{
    wxPaintDC dc(m_preview);
    const wxSize size = m_preview->GetSize();
    const int width = std::max(size.GetWidth(), 0);
    const int height = std::max(size.GetHeight(), 0);
    try {
        PreviewImage picture = m_previewComposer.Compose(*m_font, m_charCodes, width, height);
        if (width > 0 && height > 0)
            dc.DrawBitmap(m_previewBitmap.Of(std::move(picture)), 0, 0);
    } catch (...) {
        // No memory for the picture: a paint must not fail, so the area just stays white.
        dc.SetPen(*wxWHITE_PEN);
        dc.SetBrush(*wxWHITE_BRUSH);
        dc.DrawRectangle(0, 0, width, height);
    }
    // Whatever has been printed so far reaches the terminal while the window is open.
    std::fflush(stdout);
}
