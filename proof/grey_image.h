#pragma once

#include <cstdint>
#include <vector>

// An 8-bit greyscale picture, rows top-down, each left to right, no padding.
struct GreyImage
{
    unsigned width = 0;
    unsigned height = 0;
    std::vector<uint8_t> pixels;

    bool operator==(const GreyImage&) const = default;
};
