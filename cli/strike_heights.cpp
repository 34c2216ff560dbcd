#include "cli/strike_heights.h"

#include "raster/strike_height.h"

#include <set>

std::optional<std::string> StrikeHeightsNote(FT_Face face)
{
    if (FT_IS_SCALABLE(face) || face->num_fixed_sizes <= 0)
        return std::nullopt;

    std::set<FT_Pos> heights;
    for (FT_Int i = 0; i < face->num_fixed_sizes; ++i)
        heights.insert(StrikePixelHeight(face->available_sizes[i]));
    std::string note = "the font has bitmaps at ";
    for (FT_Pos height : heights)
        note += std::to_string(height) + (height == *heights.rbegin() ? " px" : ", ");
    return note;
}
