#include "raster/preview_glyph_cache.h"

#include "raster/ft_font.h"

#include <cstring>

namespace {

// Enough for every cell of a very large window; past it the cache starts afresh, which
// bounds its memory to a few megabytes.
constexpr size_t kMaxGlyphs = 16384;

PreviewGlyph Rendered(FTFont& font, uint32_t code)
{
    PreviewGlyph copy;
    FTGlyph glyph;
    try {
        font.RenderGlyph(code, glyph);
    } catch (const FTException&) {
        return copy; // drawn as nothing: its cell stays empty
    }
    const FT_Bitmap& bitmap = *glyph.bitmap;
    copy.left = glyph.left;
    copy.top = glyph.top;
    if (bitmap.buffer == nullptr)
        return copy;
    copy.width = bitmap.width;
    copy.rows = bitmap.rows;
    copy.coverage.resize(size_t{bitmap.width} * bitmap.rows);
    for (uint32_t r = 0; r < bitmap.rows; ++r)
        std::memcpy(copy.coverage.data() + size_t{r} * bitmap.width, bitmap.buffer + int64_t{r} * bitmap.pitch,
                    bitmap.width);
    return copy;
}

} // namespace

const PreviewGlyph& PreviewGlyphCache::Get(FTFont& font, uint32_t code)
{
    if (font.FaceSerial() != faceSerial || glyphs.size() >= kMaxGlyphs) {
        glyphs.clear();
        faceSerial = font.FaceSerial();
    }
    auto found = glyphs.find(code);
    if (found == glyphs.end())
        found = glyphs.emplace(code, Rendered(font, code)).first;
    return found->second;
}
