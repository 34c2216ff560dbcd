#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <optional>
#include <string>

// For a face with bitmaps only, which can be exported only at the heights it has bitmaps
// for: "the font has bitmaps at 12, 14, 16 px". Nothing for a scalable face.
std::optional<std::string> StrikeHeightsNote(FT_Face face);
