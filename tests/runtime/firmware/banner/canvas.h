// A small framebuffer in RAM that text is drawn into, one coverage byte a pixel, and its
// printout as text art.
#ifndef FIRMWARE_CANVAS_H
#define FIRMWARE_CANVAS_H

#include <stdint.h>

constexpr int kCanvasMaxSide = 224;

struct Canvas
{
    int width;
    int height;
    uint8_t pixels[kCanvasMaxSide * kCanvasMaxSide];
};

// Empties the canvas and gives it this size, at most kCanvasMaxSide either way.
void CanvasClear(Canvas& canvas, int width, int height);

// Lays coverage on a pixel, keeping the darker value where glyphs overlap; pixels off the
// canvas are dropped.
void CanvasPlot(Canvas& canvas, int x, int y, uint8_t coverage);

// Prints one line of text per row, one character per pixel by its coverage.
void CanvasPrint(const Canvas& canvas);

#endif
