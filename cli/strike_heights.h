#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <optional>
#include <string>
#include <vector>

// For a face with bitmaps only, which can be exported only at the heights it has bitmaps
// for: "the font has bitmaps at 8, 16 px" and how to ask for one of them, "give --height 8
// or --height 16" for the main font, "give it one as FONT@PX, e.g. Extra.pcf@8" for the
// extra font `extraPath`. Nothing for a scalable face.
std::vector<std::string> StrikeHeightsNote(FT_Face face, const std::optional<std::string>& extraPath);
