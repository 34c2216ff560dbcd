// Draws a banner in the four rotations as text art, the same program on the host and on a
// Cortex-M3: its output is compared byte for byte. It draws from the ds export, then through
// the runtime from the packed export, a Unicode font, and checks each picture against the ds
// one quantized to the packed bits a pixel; then a banner of four scripts from UTF-8.

#include "canvas.h"
#include "ds_text.h"

#include <banner_ds.h> // generated: font_banner_ds_0 .. font_banner_ds_270

#include <stdio.h>

#include <banner_packed.h> // generated: font_banner_packed

namespace {

// "«Tür» ÄVé jy 21°C" in Latin-1: descenders, and kerned pairs of which one or both are bytes
// above 127, negative as a char on the host but not on ARM.
const char kBanner[] = "\xABT\xFCr\xBB \xC4V\xE9 jy 21\xB0"
                       "C";
// The same in UTF-8, and the second line of banner_strings.txt.
const char kBannerUtf8[] = "«Tür» ÄVé jy 21°C";
const char kScripts[] = "Grüße, Привет, Γειά σου, 你好世界";
const ds_bitmap_font_t* const kDsFonts[] = {&font_banner_ds_0, &font_banner_ds_90, &font_banner_ds_180,
                                            &font_banner_ds_270};
const int kMargin = 2; // room for ink left of the first pen position and past the last advance

Canvas ds_canvas;

struct Pen
{
    int x, y;
};

// Where the pen starts so that a line of text `advance` long, between the font's ascender
// and descender, lands inside the canvas at `rotation`; sizes the canvas to fit.
Pen Frame(int rotation, int advance, int ascender, int descender, Canvas& canvas)
{
    const int along = advance + 2 * kMargin, across = ascender - descender + 2 * kMargin;
    const bool upright = rotation == 0 || rotation == 180;
    CanvasClear(canvas, upright ? along : across, upright ? across : along);
    const Pen pens[] = {{kMargin, kMargin + ascender},
                        {kMargin + ascender, kMargin + advance},
                        {kMargin + advance, kMargin - descender},
                        {kMargin - descender, kMargin}};
    return pens[rotation / 90];
}

Canvas packed_canvas;

extern "C" void PlotPacked(void* canvas, int x, int y, uint8_t coverage)
{
    CanvasPlot(*static_cast<Canvas*>(canvas), x, y, coverage);
}

// The coverage the runtime gives a ds value stored in FIRMWARE_PACKED_BPP bits.
uint8_t Quantized(uint8_t value)
{
    const int top = (1 << FIRMWARE_PACKED_BPP) - 1;
    return static_cast<uint8_t>((value * top + 127) / 255 * 255 / top);
}

// Draws the banner through the runtime as DrawDs drew it; says whether the metrics, the
// advance and every pixel agree, and prints the picture when they do not.
bool DrawPacked(int rotation, int advance)
{
    const ds_bitmap_font_t& ds = *kDsFonts[rotation / 90];
    const vt_font_t* font = &font_banner_packed;
    const Pen pen = Frame(rotation, advance, ds.ascender, ds.descender, packed_canvas);
    const int drawn = vt_draw_text(font, kBannerUtf8, pen.x, pen.y, rotation, PlotPacked, &packed_canvas);
    bool same = drawn == advance && vt_text_width(font, kBannerUtf8) == advance &&
                vt_font_height(font) == static_cast<int>(ds.height) && vt_font_ascender(font) == ds.ascender &&
                vt_font_descender(font) == ds.descender;
    for (int i = 0; i < ds_canvas.width * ds_canvas.height; ++i)
        same = same && packed_canvas.pixels[i] == Quantized(ds_canvas.pixels[i]);
    printf("packed %d: advance %d, %s\n", rotation, drawn, same ? "as ds" : "differs from ds:");
    if (!same)
        CanvasPrint(packed_canvas);
    return same;
}

// Draws the banner of four scripts through the runtime and prints it.
void DrawScripts(int rotation)
{
    const vt_font_t* font = &font_banner_packed;
    const int advance = vt_text_width(font, kScripts);
    const Pen pen = Frame(rotation, advance, vt_font_ascender(font), vt_font_descender(font), packed_canvas);
    vt_draw_text(font, kScripts, pen.x, pen.y, rotation, PlotPacked, &packed_canvas);
    printf("scripts %d: advance %d\n", rotation, advance);
    CanvasPrint(packed_canvas);
}

// Draws the banner from the ds record of `rotation` and prints it; returns its advance.
int DrawDs(int rotation)
{
    const ds_bitmap_font_t& font = *kDsFonts[rotation / 90];
    const int advance = DsDrawText(font, kBanner, 0, 0, rotation, nullptr);
    const Pen pen = Frame(rotation, advance, font.ascender, font.descender, ds_canvas);
    DsDrawText(font, kBanner, pen.x, pen.y, rotation, &ds_canvas);
    printf("ds %d: advance %d, height %d, ascender %d, descender %d\n", rotation, advance,
           static_cast<int>(font.height), static_cast<int>(font.ascender), static_cast<int>(font.descender));
    CanvasPrint(ds_canvas);
    return advance;
}

} // namespace

int main()
{
    bool ok = true;
    for (int rotation = 0; rotation < 360; rotation += 90) {
        const int advance = DrawDs(rotation);
        ok = DrawPacked(rotation, advance) && ok;
        DrawScripts(rotation);
    }
    return ok ? 0 : 1;
}
