#include "point_by_point_paint.h"

#include "raster/ft_font.h"
#include "raster/preview_image.h"

#include <wx/dcclient.h>
#include <wx/window.h>

namespace {

void DrawGlyph(wxDC& dc, uint32_t x, uint32_t y, const FTGlyph& glyph)
{
    const FT_Bitmap& bitmap = *glyph.bitmap;
    for (uint32_t r = 0; r < bitmap.rows; ++r) {
        for (uint32_t c = 0; c < bitmap.width; ++c) {
            const uint8_t v = bitmap.buffer[bitmap.pitch * r + c];
            if (v == 0)
                continue;
            const wxColour colour(255 - v, 255 - v, 255 - v, PREVIEW_GLYPH_ALPHA);
            dc.SetPen(wxPen(colour, 1, wxPENSTYLE_SOLID));
            dc.DrawPoint(x + glyph.left + c, y - glyph.top + r);
        }
    }
}

} // namespace

void PaintPointByPoint(wxWindow& area, FTFont& font, const CharCodeList& codes)
{
    wxPaintDC dc(&area);
    const wxSize size = area.GetSize();
    dc.SetPen(wxPen(*wxWHITE, 1, wxPENSTYLE_SOLID));
    dc.SetBrush(wxBrush(*wxWHITE, wxBRUSHSTYLE_SOLID));
    dc.DrawRectangle(0, 0, size.GetWidth(), size.GetHeight());
    font.SetPixelSize(PREVIEW_PIXEL_SIZE);
    const uint32_t cell = static_cast<uint32_t>(font.GetLineHeight());
    const uint32_t width = static_cast<uint32_t>(size.GetWidth());
    uint32_t x = 0;
    uint32_t y = cell;
    FTGlyph glyph;
    for (uint32_t code : codes) {
        font.RenderGlyph(code, glyph);
        if (width - x < cell) {
            x = 0;
            y += cell;
        }
        DrawGlyph(dc, x, y, glyph);
        x += cell;
    }
}
