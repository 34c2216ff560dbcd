#pragma once

// A grey canvas shared by the test exporter and the consumer program, so that a
// string drawn from FreeType and one drawn from the exported records can be compared.
// Header-only and free of the tool's code: the consumer is built outside the project.

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

struct Canvas
{
    int width = 0;
    int height = 0;
    std::vector<uint8_t> pixels;

    Canvas(int w, int h) : width(w), height(h), pixels(static_cast<size_t>(w) * h, 0) {}

    // Overlapping glyphs keep the stronger coverage; pixels off the canvas are dropped.
    void Blend(int x, int y, uint8_t value)
    {
        if (x < 0 || y < 0 || x >= width || y >= height)
            return;
        uint8_t& p = pixels[static_cast<size_t>(y) * width + x];
        if (value > p)
            p = value;
    }
    uint8_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// The canvas turned like the exported pixel arrays: 90 a quarter turn anticlockwise,
// 180 a half turn, 270 a quarter turn clockwise.
inline Canvas Rotated(const Canvas& c, int rotation)
{
    const bool quarter = rotation == 90 || rotation == 270;
    Canvas out(quarter ? c.height : c.width, quarter ? c.width : c.height);
    for (int y = 0; y < c.height; ++y) {
        for (int x = 0; x < c.width; ++x) {
            int rx = x, ry = y;
            if (rotation == 90) {
                rx = y;
                ry = c.width - 1 - x;
            } else if (rotation == 180) {
                rx = c.width - 1 - x;
                ry = c.height - 1 - y;
            } else if (rotation == 270) {
                rx = c.height - 1 - y;
                ry = x;
            }
            out.pixels[static_cast<size_t>(ry) * out.width + rx] = c.At(x, y);
        }
    }
    return out;
}

// File format: "W H\n" then W*H bytes, row by row.
inline bool SaveCanvas(FILE* file, const Canvas& c)
{
    std::fprintf(file, "%d %d\n", c.width, c.height);
    return std::fwrite(c.pixels.data(), 1, c.pixels.size(), file) == c.pixels.size();
}

inline bool LoadCanvas(FILE* file, Canvas& c)
{
    int w = 0, h = 0;
    if (std::fscanf(file, "%d %d", &w, &h) != 2 || std::fgetc(file) != '\n' || w <= 0 || h <= 0)
        return false;
    c = Canvas(w, h);
    return std::fread(c.pixels.data(), 1, c.pixels.size(), file) == c.pixels.size();
}
