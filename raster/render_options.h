#pragma once

#include <array>
#include <cstdint>

// How outlines are fitted to the pixel grid before they are rendered.
enum class Hinting
{
    Native, // the font's own hinting instructions (FreeType's default), as the desktop renders
    Light,  // vertical fitting only, shapes closest to the design
    Auto,   // FreeType's autohinter, whatever instructions the font has
    None,   // the outlines as designed
};

// How FTFont turns an outline into 8-bit coverage. The defaults are the desktop program's
// render. Bitmap strikes are taken as the font holds them whatever the choice.
struct RenderOptions
{
    Hinting hinting = Hinting::Native;
    // FreeType's 1-bit rasteriser, each pixel 0x00 or 0xFF; not with Hinting::Light, whose
    // load target is a grey one.
    bool mono = false;
    // Coverage v becomes 255 * (v / 255)^(1 / gamma); 1 leaves it as rendered. Grey only.
    double gamma = 1.0;

    bool operator==(const RenderOptions&) const = default;
};

// The 256 coverage values after gamma `gamma` (> 0), rounded to the nearest.
std::array<uint8_t, 256> GammaTable(double gamma);
