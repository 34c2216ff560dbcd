#include "raster/render_options.h"

#include <cmath>

std::array<uint8_t, 256> GammaTable(double gamma)
{
    std::array<uint8_t, 256> table{};
    for (unsigned v = 0; v < table.size(); ++v)
        table[v] = static_cast<uint8_t>(std::lround(255.0 * std::pow(v / 255.0, 1.0 / gamma)));
    return table;
}
