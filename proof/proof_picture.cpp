#include "proof/proof_picture.h"

#include <algorithm>
#include <utility>

namespace {

// Part of a picture that one panel covers.
struct Canvas
{
    uint8_t* origin;
    size_t stride;
    int64_t width;
    int64_t height;
};

// The firmware's lookup: the delta of the first entry naming the character before,
// reading the table up to its closing 0. Nothing stands before a line's first character.
int KerningAfter(const WrittenGlyph& glyph, uint32_t previous)
{
    for (const KerningPair& pair : glyph.kerning) {
        if (pair.prev == 0)
            break;
        if (pair.prev == previous)
            return pair.delta;
    }
    return 0;
}

// Walks the pen over the text as the firmware does, calling draw(glyph, left, top) with
// each glyph's top-left pixel on panel 0. Returns the largest line advance.
template <typename Draw>
int64_t WalkText(const WrittenFont& font, const ProofLines& lines, int64_t margin, Draw&& draw)
{
    const int64_t ascender = font.Metrics().ascender, lineHeight = static_cast<int64_t>(font.Metrics().height);
    int64_t widest = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        const int64_t baseline = margin + ascender + static_cast<int64_t>(i) * lineHeight;
        int64_t pen = margin;
        uint32_t previous = 0;
        for (uint32_t code : lines[i]) {
            const WrittenGlyph* glyph = font.Find(code);
            if (glyph == nullptr)
                continue;
            pen += KerningAfter(*glyph, previous);
            draw(*glyph, pen + glyph->xoff, baseline - glyph->yoff);
            pen += glyph->xadvance;
            previous = code;
        }
        widest = std::max(widest, pen - margin);
    }
    return widest;
}

// Draws the glyph whose top-left pixel is at (left, top) on panel 0 onto the panel of
// rotation turn * 90, from that rotation's pixel array, as the firmware places it.
void DrawGlyph(const Canvas& canvas, const ProofLayout& layout, const WrittenGlyph& glyph, unsigned turn, int64_t left,
               int64_t top)
{
    if (!glyph.hasPixels)
        return;
    const int64_t w = glyph.w, h = glyph.h, width = layout.panelWidth, height = layout.panelHeight;
    // The turned array's top-left corner; the arrays of 90 and 270 are h wide and w high.
    const int64_t x0[] = {left, top, width - left - w, height - top - h};
    const int64_t y0[] = {top, width - left - w, height - top - h, left};
    const int64_t x = x0[turn], y = y0[turn];
    const int64_t columns = turn % 2 ? h : w, rows = turn % 2 ? w : h;
    const std::vector<uint8_t>& pixels = glyph.pixels[turn].pixels;
    if (pixels.size() < static_cast<size_t>(columns * rows))
        return;
    const int64_t firstColumn = std::max<int64_t>(0, -x), endColumn = std::min(columns, canvas.width - x);
    const int64_t endRow = std::min(rows, canvas.height - y);
    for (int64_t row = std::max<int64_t>(0, -y); row < endRow; ++row) {
        uint8_t* line = canvas.origin + (y + row) * canvas.stride;
        const uint8_t* from = pixels.data() + row * columns;
        for (int64_t column = firstColumn; column < endColumn; ++column)
            line[x + column] = std::min<uint8_t>(line[x + column], 255 - from[column]);
    }
}

void DrawPanel(const Canvas& canvas, const WrittenFont& font, const ProofLines& lines, const ProofLayout& layout,
               unsigned turn)
{
    for (int64_t row = 0; row < canvas.height; ++row)
        std::fill_n(canvas.origin + row * canvas.stride, canvas.width, uint8_t{255});
    WalkText(font, lines, layout.margin, [&](const WrittenGlyph& glyph, int64_t left, int64_t top) {
        DrawGlyph(canvas, layout, glyph, turn, left, top);
    });
}

// A panel's width and height on the picture: panel 0's, turned for 90 and 270.
std::pair<int64_t, int64_t> PanelSize(const ProofLayout& layout, unsigned turn)
{
    return turn % 2 ? std::pair(layout.panelHeight, layout.panelWidth)
                    : std::pair(layout.panelWidth, layout.panelHeight);
}

} // namespace

int64_t ProofLayout::PictureWidth() const
{
    int64_t width = 0;
    for (unsigned rotation : rotations)
        width += PanelSize(*this, rotation / 90 % 4).first + margin;
    return std::max<int64_t>(0, width - margin);
}

int64_t ProofLayout::PictureHeight() const
{
    int64_t height = 0;
    for (unsigned rotation : rotations)
        height = std::max(height, PanelSize(*this, rotation / 90 % 4).second);
    return height;
}

ProofLayout LayOutProof(const WrittenFont& font, const ProofLines& lines, unsigned exportHeight,
                        const RotationList& rotations)
{
    ProofLayout layout;
    layout.rotations = rotations;
    layout.margin = exportHeight;
    const int64_t widest = WalkText(font, lines, layout.margin, [](const WrittenGlyph&, int64_t, int64_t) {});
    layout.panelWidth = 2 * layout.margin + widest;
    // A broken face can have a negative line height; the panel then has no height rather
    // than a negative one.
    layout.panelHeight = std::max<int64_t>(0, 2 * layout.margin + static_cast<int64_t>(lines.size()) *
                                                                      static_cast<int64_t>(font.Metrics().height));
    return layout;
}

GreyImage DrawProofPanel(const WrittenFont& font, const ProofLines& lines, const ProofLayout& layout, unsigned rotation)
{
    const unsigned turn = rotation / 90 % 4;
    const auto [width, height] = PanelSize(layout, turn);
    GreyImage panel;
    panel.width = static_cast<unsigned>(width);
    panel.height = static_cast<unsigned>(height);
    panel.pixels.resize(size_t{panel.width} * panel.height);
    DrawPanel(Canvas{panel.pixels.data(), panel.width, panel.width, panel.height}, font, lines, layout, turn);
    return panel;
}

GreyImage DrawProof(const WrittenFont& font, const ProofLines& lines, const ProofLayout& layout)
{
    GreyImage picture;
    picture.width = static_cast<unsigned>(layout.PictureWidth());
    picture.height = static_cast<unsigned>(layout.PictureHeight());
    picture.pixels.assign(size_t{picture.width} * picture.height, 0xE0);
    int64_t left = 0;
    for (unsigned rotation : layout.rotations) {
        const unsigned turn = rotation / 90 % 4;
        const auto [width, height] = PanelSize(layout, turn);
        DrawPanel(Canvas{picture.pixels.data() + left, picture.width, width, height}, font, lines, layout, turn);
        left += width + layout.margin;
    }
    return picture;
}
