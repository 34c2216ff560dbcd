#include "cli/strike_heights.h"

#include "raster/strike_height.h"

#include <set>

std::vector<std::string> StrikeHeightsNote(FT_Face face, const std::optional<std::string>& extraPath)
{
    if (FT_IS_SCALABLE(face) || face->num_fixed_sizes <= 0)
        return {};

    std::set<FT_Pos> heights;
    for (FT_Int i = 0; i < face->num_fixed_sizes; ++i)
        heights.insert(StrikePixelHeight(face->available_sizes[i]));
    std::string note = "the font has bitmaps at ", advice = "give ";
    for (auto height = heights.begin(); height != heights.end(); ++height) {
        const bool last = std::next(height) == heights.end(), first = height == heights.begin();
        note += (first ? "" : ", ") + std::to_string(*height) + (last ? " px" : "");
        advice += std::string(first ? "" : last ? " or " : ", ") + "--height " + std::to_string(*height);
    }
    if (extraPath)
        advice = "give it one as FONT@PX, e.g. " + *extraPath + "@" + std::to_string(*heights.begin());
    return {note, advice};
}
