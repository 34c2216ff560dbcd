#include "export/packed/packed_font.h"

#include "export/packed/bit_writer.h"
#include "export/packed/code_blocks.h"
#include "export/packed/packed_kerning.h"
#include "export/packed/packed_pixels.h"
#include "export/packed/pixel_model.h"

#include <algorithm>
#include <limits>

namespace {

using Record = std::array<int64_t, packed::kFields>;

constexpr uint64_t kMaxFieldValue = uint64_t{1} << packed::kMaxFieldBits;

// The fields that place and code a glyph's pixels, which a glyph with nothing to draw has none of.
bool IsBoxField(unsigned field)
{
    return field == packed::kLeft || field == packed::kTop || field == packed::kPixels || field == packed::kCoding;
}

// Each field in the fewest bits that hold its values less their minimum. A glyph with
// nothing to draw takes the minimum of the others' boxes and pixel positions.
void PackRecords(std::vector<Record> records, const std::vector<bool>& drawn, PackedFont& font)
{
    Record min, max;
    min.fill(std::numeric_limits<int64_t>::max());
    max.fill(std::numeric_limits<int64_t>::min());
    for (size_t i = 0; i < records.size(); ++i) {
        for (unsigned field = 0; field < packed::kFields; ++field) {
            if (IsBoxField(field) && !drawn[i])
                continue;
            min[field] = std::min(min[field], records[i][field]);
            max[field] = std::max(max[field], records[i][field]);
        }
    }
    for (unsigned field = 0; field < packed::kFields; ++field) {
        if (min[field] > max[field])
            min[field] = max[field] = 0;
        // Pixel positions count from 0, so that their field needs no minimum.
        if (field == packed::kPixels)
            min[field] = 0;
        font.fieldMin[field] = static_cast<int>(min[field]);
        font.fieldBits[field] = BitWriter::BitsFor(static_cast<uint64_t>(max[field] - min[field]));
        font.recordBits += font.fieldBits[field];
    }
    BitWriter out;
    for (size_t i = 0; i < records.size(); ++i) {
        for (unsigned field = 0; field < packed::kFields; ++field) {
            const int64_t value = IsBoxField(field) && !drawn[i] ? min[field] : records[i][field];
            out.Write(static_cast<uint32_t>(value - min[field]), font.fieldBits[field]);
        }
    }
    font.records = out.Bytes();
}

// The runtime reads a field in at most 24 bits: beyond 2^24 bits of pixels, each glyph's
// start is a multiple of 2^shift bits and its position is kept >> shift.
unsigned PixelShift(const std::vector<StoredPixels>& stored)
{
    for (unsigned shift = 0;; ++shift) {
        const uint64_t unit = uint64_t{1} << shift;
        uint64_t end = 0, lastStart = 0;
        for (const StoredPixels& glyph : stored) {
            lastStart = (end + unit - 1) / unit * unit;
            end = lastStart + glyph.bits.Size();
        }
        if ((lastStart >> shift) < kMaxFieldValue)
            return shift;
    }
}

} // namespace

PackedFont PackFont(std::vector<PackGlyph> glyphs, const std::vector<PackKerning>& kerning,
                    const FontRecordMetrics& metrics, const PackOptions& options)
{
    std::sort(glyphs.begin(), glyphs.end(), [](const PackGlyph& a, const PackGlyph& b) { return a.code < b.code; });
    PackedFont font;
    font.metrics = metrics;
    font.bpp = options.bpp;
    font.coverageScale = 255 / ((1u << options.bpp) - 1);
    font.keys = options.keys;
    std::vector<uint32_t> codes;
    for (const PackGlyph& glyph : glyphs)
        codes.push_back(glyph.code);
    PackCodeBlocks(codes, font);

    std::vector<StoredPixels> stored;
    for (const PackGlyph& glyph : glyphs)
        stored.push_back(StorePixels(glyph, options));
    if (options.compress == PixelCompression::Auto || options.compress == PixelCompression::Model)
        ApplyPixelModel(stored, options.bpp, options.compress == PixelCompression::Model, font);
    font.pixelShift = PixelShift(stored);
    BitWriter pixels;
    std::vector<Record> records;
    std::vector<bool> drawn;
    for (size_t i = 0; i < glyphs.size(); ++i) {
        while (pixels.Size() % (uint64_t{1} << font.pixelShift) != 0)
            pixels.Write(0, 1);
        drawn.push_back(stored[i].width > 0);
        records.push_back({stored[i].width, stored[i].rows, stored[i].left, stored[i].top, glyphs[i].advance,
                           static_cast<int64_t>(pixels.Size() >> font.pixelShift), stored[i].coding});
        pixels.Append(stored[i].bits);
    }
    PackRecords(std::move(records), drawn, font);
    font.pixels = pixels.Bytes();
    // The model's decoder reads up to 32 bits past a glyph's last.
    if (!font.model.empty())
        font.pixels.resize(font.pixels.size() + 4, 0);
    // Records of no bits or no pixels at all still get a byte, so that the runtime never
    // works out a position from a null array.
    for (std::vector<uint8_t>* bytes : {&font.records, &font.pixels, &font.blocks})
        if (bytes->empty())
            bytes->push_back(0);
    // Kerning joins glyphs by their index, which takes fewer bits than a code.
    font.glyphBits = BitWriter::BitsFor(glyphs.size() - 1);
    auto indexOf = [&codes](uint32_t code) {
        return static_cast<uint32_t>(std::lower_bound(codes.begin(), codes.end(), code) - codes.begin());
    };
    std::vector<PackKerning> indexed;
    for (const PackKerning& pair : kerning)
        indexed.push_back({indexOf(pair.left), indexOf(pair.right), pair.delta});
    PackKerningPairs(indexed, font);
    return font;
}
