#include "canvas.h"

#include <stdio.h>
#include <string.h>

void CanvasClear(Canvas& canvas, int width, int height)
{
    canvas.width = width < 0 ? 0 : width > kCanvasMaxSide ? kCanvasMaxSide : width;
    canvas.height = height < 0 ? 0 : height > kCanvasMaxSide ? kCanvasMaxSide : height;
    memset(canvas.pixels, 0, sizeof canvas.pixels);
}

void CanvasPlot(Canvas& canvas, int x, int y, uint8_t coverage)
{
    if (x < 0 || y < 0 || x >= canvas.width || y >= canvas.height)
        return;
    uint8_t& pixel = canvas.pixels[y * canvas.width + x];
    if (coverage > pixel)
        pixel = coverage;
}

void CanvasPrint(const Canvas& canvas)
{
    static const char kInk[] = "-:=+*#%@"; // lightest to darkest
    char line[kCanvasMaxSide + 1];
    for (int y = 0; y < canvas.height; ++y) {
        int length = 0;
        for (int x = 0; x < canvas.width; ++x) {
            const int coverage = canvas.pixels[y * canvas.width + x];
            line[length++] = coverage == 0 ? '.' : kInk[(coverage - 1) * 8 / 255];
        }
        line[length++] = '\n';
        fwrite(line, 1, length, stdout);
    }
}
