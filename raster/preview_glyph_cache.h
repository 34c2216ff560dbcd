#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

class FTFont;

// One glyph as the preview draws it: its coverage copied out of FreeType's glyph slot,
// one byte per pixel, rows top-down, `width` bytes per row.
struct PreviewGlyph
{
    int32_t left = 0; // pen position to the first column, positive right
    int32_t top = 0;  // baseline to the first row, positive up
    uint32_t width = 0;
    uint32_t rows = 0;
    std::vector<uint8_t> coverage;
};

// Glyphs of the preview, rendered once and kept while the face stays the same: most
// paints show the same glyphs again. The preview renders at one size only, so the face
// and the code decide the pixels.
class PreviewGlyphCache
{
public:
    // The glyph of `code` in the font's current face, rendered at the size set last (the
    // preview's, always). A glyph that cannot be loaded or rendered comes back empty.
    const PreviewGlyph& Get(FTFont& font, uint32_t code);

private:
    uint64_t faceSerial = 0;
    std::unordered_map<uint32_t, PreviewGlyph> glyphs;
};
