#pragma once

#include "charset/char_code_list.h"

class FTFont;
class wxWindow;

// Paints the preview the literal way, as a yardstick for the composed picture: the area
// white, then every coverage pixel as one point with a pen of its own (grey 255 - v,
// alpha 80), laid over by the device context. FreeType failures throw. Call it from a
// paint handler of `area`.
void PaintPointByPoint(wxWindow& area, FTFont& font, const CharCodeList& codes);
