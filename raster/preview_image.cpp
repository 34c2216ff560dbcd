#include "raster/preview_image.h"

#include "raster/ft_font.h"
#include "raster/strike_height.h"

#include <algorithm>

namespace {

// Skipping a cell must never change a pixel, so it needs a bound on how far any glyph's
// ink can reach from its pen position, found without loading a glyph. A cell whose
// baseline lies more than `up` below the area's bottom edge, or whose pen lies more than
// -`left` right of the area's right edge, cannot reach into the area.
struct InkReach
{
    int64_t up;   // above the baseline
    int64_t left; // zero or negative: left of the pen
};

// Hinting moves outline points by a pixel or so; a quarter em at the preview size keeps
// well clear of that.
constexpr int64_t kHintingSlack = PREVIEW_PIXEL_SIZE / 4;

// Every FreeType bitmap format (sfnt strikes, PCF, BDF, FNT) keeps glyph bearings in at
// most 16 bits, so no bitmap glyph reaches further than this.
constexpr int64_t kBitmapReach = 1 << 16;

bool MayUseBitmapStrike(FT_Face face)
{
    for (FT_Int i = 0; i < face->num_fixed_sizes; ++i) {
        if (StrikePixelHeight(face->available_sizes[i]) == PREVIEW_PIXEL_SIZE)
            return true;
    }
    return false;
}

// Outlines: every glyph lies inside the face's bounding box (font units), which scales
// with the size like the outlines do; the rendered bitmap is that box rounded outwards to
// whole pixels, plus what hinting moves. The ascender is taken as well in case a font's
// box is too small. Bitmaps: only the width of their stored bearings bounds them.
InkReach InkReachOf(FT_Face face)
{
    InkReach reach{0, 0};
    if (FT_IS_SCALABLE(face)) {
        const FT_Size_Metrics& metrics = face->size->metrics;
        const FT_Pos top = std::max<FT_Pos>(face->bbox.yMax, face->ascender);
        const FT_Pos yMax = FT_MulFix(top, metrics.y_scale);
        const FT_Pos xMin = FT_MulFix(std::min<FT_Pos>(face->bbox.xMin, 0), metrics.x_scale);
        reach.up = ((yMax + 63) >> 6) + kHintingSlack;
        reach.left = (xMin >> 6) - kHintingSlack;
    }
    if (!FT_IS_SCALABLE(face) || MayUseBitmapStrike(face)) {
        reach.up = std::max(reach.up, kBitmapReach);
        reach.left = std::min(reach.left, -kBitmapReach);
    }
    return reach;
}

// Cairo's OVER with a solid source: src * a + dst * (1 - a), a = alpha / 255, rounded.
uint8_t LaidOver(uint8_t dst, uint8_t coverage)
{
    const uint32_t src = 255u - coverage;
    return static_cast<uint8_t>((src * PREVIEW_GLYPH_ALPHA + dst * (255u - PREVIEW_GLYPH_ALPHA) + 127u) / 255u);
}

// Lays the glyph's coverage over the picture, its pen position at (penX, penY);
// whatever falls outside the picture is dropped.
void LayGlyphOver(PreviewImage& image, int64_t penX, int64_t penY, const PreviewGlyph& glyph)
{
    const int64_t left = penX + glyph.left;
    const int64_t top = penY - glyph.top;
    const int64_t firstRow = std::max<int64_t>(0, -top);
    const int64_t endRow = std::min<int64_t>(glyph.rows, int64_t{image.height} - top);
    const int64_t firstColumn = std::max<int64_t>(0, -left);
    const int64_t endColumn = std::min<int64_t>(glyph.width, int64_t{image.width} - left);

    for (int64_t r = firstRow; r < endRow; ++r) {
        const uint8_t* coverage = glyph.coverage.data() + r * glyph.width;
        uint8_t* pixel = image.rgb.data() + 3 * ((top + r) * image.width + left + firstColumn);
        for (int64_t c = firstColumn; c < endColumn; ++c, pixel += 3) {
            if (coverage[c] != 0) {
                const uint8_t grey = LaidOver(pixel[0], coverage[c]);
                pixel[0] = pixel[1] = pixel[2] = grey;
            }
        }
    }
}

} // namespace

PreviewImage::PreviewImage(uint32_t width, uint32_t height)
    : width(width), height(height), rgb(size_t{3} * width * height, 0xFF)
{
}

PreviewImage PreviewComposer::Compose(FTFont& font, const CharCodeList& codes, uint32_t width, uint32_t height)
{
    PreviewImage image(width, height);
    if (!font.HasFace())
        return image;
    try {
        font.SetPixelSize(PREVIEW_PIXEL_SIZE);
    } catch (const FTException&) {
        return image; // e.g. a bitmap-only face without a strike of this size
    }
    const uint32_t cell = static_cast<uint32_t>(font.GetLineHeight());
    const InkReach reach = InkReachOf(font.Face());

    // The pen moves in unsigned 32-bit steps: a cell starts a new row only when fewer
    // than `cell` pixels are left, and in an area narrower than one cell the difference
    // wraps, so the rest of the list runs on to the right of it. Baselines are kept in
    // 64 bits so that rows far below never come round to the top again.
    uint32_t x = 0;
    int64_t y = cell;
    for (uint32_t code : codes) {
        if (width - x < cell) {
            x = 0;
            y += cell;
        }
        // Rows only go down: once a row's ink cannot reach up into the area, no later
        // row's can. Cells right of the area (only in an area narrower than one cell)
        // are passed over unless their ink can reach back left into it.
        if (y - reach.up >= int64_t{height})
            break;
        if (int64_t{x} + reach.left < int64_t{width})
            LayGlyphOver(image, x, y, glyphs.Get(font, code));
        x += cell;
    }
    return image;
}
