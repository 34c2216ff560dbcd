#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>
#include <vector>

// True when the bitmap can be read as one coverage byte per pixel, rows top-down.
bool IsGrayCoverage(const FT_Bitmap& bitmap);

// Converts any FreeType bitmap (1-bit mono, 2/4/8-bit grey, BGRA colour) to 8-bit
// coverage with a positive pitch equal to its width. `pixels` receives the bytes;
// the returned descriptor points into it and stays valid while `pixels` is unchanged.
// Mono becomes 0x00/0xFF, grey levels are scaled to 0..255, colour takes its alpha.
FT_Bitmap ConvertToGrayCoverage(const FT_Bitmap& source, std::vector<uint8_t>& pixels);
