#include "export/packed/packed_render.h"

#include "export/kerning/kerning_source.h"
#include "raster/ft_exception.h"

#include <limits>
#include <stdexcept>

namespace {

PackGlyph GlyphOf(uint32_t code, const FTGlyph& glyph)
{
    PackGlyph packed;
    packed.code = code;
    packed.left = glyph.left;
    packed.top = glyph.top;
    packed.advance = glyph.advanceX;
    const FT_Bitmap& bitmap = *glyph.bitmap;
    if (bitmap.buffer == nullptr)
        return packed;
    packed.width = bitmap.width;
    packed.rows = bitmap.rows;
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        const uint8_t* line = bitmap.buffer + static_cast<ptrdiff_t>(row) * bitmap.pitch;
        packed.coverage.insert(packed.coverage.end(), line, line + bitmap.width);
    }
    return packed;
}

// The glyph as the packed font gives its pixels back: each value quantized and widened.
class StoredGlyph
{
public:
    StoredGlyph(const FTGlyph& rendered, const PackGlyph& glyph, unsigned bpp) : glyph(rendered)
    {
        if (rendered.bitmap->buffer == nullptr)
            return;
        const unsigned scale = 255 / ((1u << bpp) - 1);
        for (uint8_t value : glyph.coverage)
            pixels.push_back(static_cast<uint8_t>(QuantizeCoverage(value, bpp) * scale));
        bitmap = *rendered.bitmap;
        bitmap.pitch = static_cast<int>(bitmap.width);
        bitmap.buffer = pixels.data();
        bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
        this->glyph.bitmap = &bitmap;
    }
    const FTGlyph& Glyph() const { return glyph; }

private:
    FTGlyph glyph;
    FT_Bitmap bitmap{};
    std::vector<uint8_t> pixels;
};

bool FitsInt16(long value)
{
    return value >= std::numeric_limits<int16_t>::min() && value <= std::numeric_limits<int16_t>::max();
}

} // namespace

PackedFont RenderPackedFont(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                            const ExportOptions& options, const ExportListeners& listeners)
{
    const KerningByFont kerning(fonts, characters, options);
    std::vector<PackGlyph> glyphs;
    std::vector<PackKerning> pairs;
    for (const ExportCharacter& listed : characters) {
        for (ExportListener* listener : listeners)
            listener->CharacterStarted(listed);
        FTGlyph rendered;
        fonts.at(listed.font)->RenderGlyph(listed.character, rendered, options.render);
        glyphs.push_back(GlyphOf(listed.code, rendered));
        const std::vector<KerningPair> kerned = kerning.PairsOf(listed);
        for (const KerningPair& pair : kerned)
            pairs.push_back({pair.prev, listed.code, pair.delta});
        const StoredGlyph stored(rendered, glyphs.back(), options.packed.bpp);
        const WrittenCharacter written{listed.code, listed.character, listed.font, stored.Glyph(), kerned};
        for (ExportListener* listener : listeners)
            listener->CharacterWritten(written);
    }
    const FontRecordMetrics metrics = ToRecordMetrics(CurrentLineMetrics(fonts.front()->Face()));
    if (!FitsInt16(static_cast<long>(metrics.height)) || !FitsInt16(metrics.ascender) || !FitsInt16(metrics.descender))
        throw FTException("line metrics too large for a packed font");
    PackedFont font;
    try {
        font = PackFont(std::move(glyphs), pairs, metrics, options.packed);
    } catch (const std::length_error& error) {
        throw FTException(error.what());
    }
    for (unsigned field = 0; field < packed::kFields; ++field)
        if (!FitsInt16(font.fieldMin[field]) || font.fieldBits[field] > packed::kMaxFieldBits)
            throw FTException("glyph metrics too large for a packed font");
    for (ExportListener* listener : listeners)
        listener->FontRecordsWritten(metrics);
    return font;
}
