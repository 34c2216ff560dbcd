#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

// The pixel height that selects a bitmap strike: FreeType picks the strike whose ppem,
// rounded to whole pixels, equals the height asked for.
inline FT_Pos StrikePixelHeight(const FT_Bitmap_Size& strike)
{
    return (strike.y_ppem + 32) >> 6;
}
