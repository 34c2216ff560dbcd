#pragma once

#include "raster/preview_image.h"

#include <wx/bitmap.h>

// The preview picture as a bitmap the paint can draw in one call. Turning pixels into a
// bitmap costs more than composing them, and most repaints (exposure) show the same
// picture again, so the bitmap of the last picture is kept while its pixels stay the same.
class PreviewBitmap
{
public:
    // The bitmap of `image`; not valid for an empty image.
    const wxBitmap& Of(PreviewImage&& image);

private:
    PreviewImage m_shown{0, 0};
    wxBitmap m_bitmap;
};
