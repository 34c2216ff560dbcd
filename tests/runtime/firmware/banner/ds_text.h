// Text drawn straight from a ds export's records, as a firmware without the runtime draws
// it: each rotation's own record and pixel array, copied to where the turned glyph lands.
#ifndef FIRMWARE_DS_TEXT_H
#define FIRMWARE_DS_TEXT_H

#include "canvas.h"

#include <ds_font.h>

// Draws `text` with the pen at (x, y) on the baseline, which runs along +x at rotation 0,
// -y at 90, -x at 180 and +y at 270; `font` is the record of that rotation. Codes the font
// lacks are skipped. Returns the total advance, kerning included; with no canvas it only
// measures.
int DsDrawText(const ds_bitmap_font_t& font, const char* text, int x, int y, int rotation, Canvas* canvas);

#endif
