/* A stand-in for a C firmware's text drawing with a packed font: draws a line of text
 * through the Veltrane runtime in the four rotations and shows each as text art.
 *
 *   packed_banner [TEXT]   the UTF-8 TEXT (default "Hello, Привет, Γειά") in the packed banner font
 */
#include <packed_banner_font.h> /* generated: font_packed_banner_font */

#include <stdio.h>
#include <string.h>

enum
{
    kSize = 320 /* the canvas's width and height, the pen in its middle */
};

struct canvas
{
    uint8_t coverage[kSize][kSize];
    int left, top, right, bottom; /* the box of what was plotted */
};

static void plot(void* ctx, int x, int y, uint8_t coverage)
{
    struct canvas* canvas = ctx;
    if (x < 0 || y < 0 || x >= kSize || y >= kSize)
        return;
    canvas->coverage[y][x] = coverage;
    canvas->left = x < canvas->left ? x : canvas->left;
    canvas->right = x > canvas->right ? x : canvas->right;
    canvas->top = y < canvas->top ? y : canvas->top;
    canvas->bottom = y > canvas->bottom ? y : canvas->bottom;
}

static char shade(uint8_t coverage)
{
    return coverage == 0 ? '.' : coverage < 85 ? '-' : coverage < 170 ? '+' : '#';
}

int main(int argc, char** argv)
{
    static struct canvas canvas;
    const char* text = argc > 1 ? argv[1]
                                : "Hello, \xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82, "
                                  "\xCE\x93\xCE\xB5\xCE\xB9\xCE\xAC"; /* Hello, Привет, Γειά */
    int rotation;
    for (rotation = 0; rotation < 360; rotation += 90) {
        int x, y, advance;
        memset(&canvas, 0, sizeof canvas);
        canvas.left = canvas.top = kSize;
        canvas.right = canvas.bottom = -1;
        advance = vt_draw_text(&font_packed_banner_font, text, kSize / 2, kSize / 2, rotation, plot, &canvas);
        printf("%d degrees, advance %d of %d:\n", rotation, advance, vt_text_width(&font_packed_banner_font, text));
        for (y = canvas.top; y <= canvas.bottom; ++y) {
            for (x = canvas.left; x <= canvas.right; ++x)
                putchar(shade(canvas.coverage[y][x]));
            putchar('\n');
        }
    }
    return 0;
}
