#include "raster/preview_bitmap.h"

#include <wx/image.h>

const wxBitmap& PreviewBitmap::Of(PreviewImage&& image)
{
    const bool same =
        m_bitmap.IsOk() && image.width == m_shown.width && image.height == m_shown.height && image.rgb == m_shown.rgb;
    if (!same) {
        // The image borrows the pixels; the bitmap takes its own copy.
        const wxImage pixels(image.width, image.height, image.rgb.data(), true);
        m_bitmap = wxBitmap(pixels);
        m_shown = std::move(image);
    }
    return m_bitmap;
}
