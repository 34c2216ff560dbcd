// The web page's preview: the desktop program's preview picture of the chosen font, for
// the page to put on its canvas. One face stays open between pictures, as in the window,
// so that redrawing after each keystroke renders only glyphs it has not rendered yet.

#include "charset/char_range_parser.h"
#include "raster/ft_font.h"
#include "raster/preview_image.h"

#include <emscripten/emscripten.h>

#include <exception>

namespace {

struct PagePreview
{
    FTFont font;
    PreviewComposer composer;
    PreviewImage image{0, 0};
};

PagePreview& Preview()
{
    static PagePreview preview;
    return preview;
}

} // namespace

// Opens face `faceIndex` of the font file for the pictures that follow. Returns 0 when
// FreeType cannot open it; the preview then has no face and stays white.
extern "C" EMSCRIPTEN_KEEPALIVE int page_preview_open(const char* path, long faceIndex)
{
    PagePreview& preview = Preview();
    preview.font.UnloadFace();
    try {
        preview.font.LoadFace(path, faceIndex);
        return 1;
    } catch (const std::exception&) {
        return 0;
    }
}

// The preview of the codes `charsText` names (read as the window's characters field reads
// it, unreadable pieces left out): `width` x `height` RGB pixels, three bytes each, valid
// until the next call; null when out of memory.
extern "C" EMSCRIPTEN_KEEPALIVE const uint8_t* page_preview_compose(const char* charsText, uint32_t width,
                                                                    uint32_t height)
{
    PagePreview& preview = Preview();
    try {
        preview.image = preview.composer.Compose(preview.font, ParseCharCodeText(charsText), width, height);
        return preview.image.rgb.data();
    } catch (const std::exception&) {
        return nullptr;
    }
}
