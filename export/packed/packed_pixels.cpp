#include "export/packed/packed_pixels.h"

#include <optional>

namespace {

// The quantized values inside the box, in the order `coding` scans them.
std::vector<uint8_t> ScanOrder(const std::vector<uint8_t>& box, unsigned width, unsigned rows, unsigned coding)
{
    if (!(coding & packed::kColumns))
        return box;
    std::vector<uint8_t> scanned;
    scanned.reserve(box.size());
    for (unsigned column = 0; column < width; ++column)
        for (unsigned row = 0; row < rows; ++row)
            scanned.push_back(box[row * width + column]);
    return scanned;
}

// The values as the runtime decodes them: a zero run before each value that is not 0
// (none before a value at 1 bit a pixel) and the trailing zeros as a last run; with
// kChanges each value is XOR the pixel before it.
void WriteCoded(const std::vector<uint8_t>& scanned, unsigned coding, unsigned bpp, BitWriter& out)
{
    uint32_t zeros = 0;
    uint8_t previous = 0;
    for (uint8_t value : scanned) {
        const uint8_t stored = coding & packed::kChanges ? value ^ previous : value;
        previous = value;
        if (!(coding & packed::kRuns)) {
            out.Write(stored, bpp);
        } else if (stored == 0) {
            ++zeros;
        } else {
            out.WriteRun(zeros);
            if (bpp > 1)
                out.Write(stored, bpp);
            zeros = 0;
        }
    }
    if ((coding & packed::kRuns) && zeros > 0)
        out.WriteRun(zeros);
}

} // namespace

StoredPixels StorePixels(const PackGlyph& glyph, const PackOptions& options)
{
    StoredPixels stored;
    stored.left = glyph.left;
    stored.top = glyph.top;
    std::vector<uint8_t> levels;
    for (uint8_t value : glyph.coverage)
        levels.push_back(static_cast<uint8_t>(QuantizeCoverage(value, options.bpp)));
    // The box of the values that are not 0 once quantized.
    unsigned firstRow = glyph.rows, lastRow = 0, firstColumn = glyph.width, lastColumn = 0;
    bool inked = false;
    for (unsigned row = 0; row < glyph.rows; ++row) {
        for (unsigned column = 0; column < glyph.width; ++column) {
            if (levels[row * glyph.width + column] == 0)
                continue;
            inked = true;
            firstRow = std::min(firstRow, row);
            lastRow = std::max(lastRow, row);
            firstColumn = std::min(firstColumn, column);
            lastColumn = std::max(lastColumn, column);
        }
    }
    if (!inked)
        return stored;
    stored.width = lastColumn - firstColumn + 1;
    stored.rows = lastRow - firstRow + 1;
    stored.left += static_cast<int>(firstColumn);
    stored.top -= static_cast<int>(firstRow);
    std::vector<uint8_t>& box = stored.box;
    box.reserve(size_t{stored.width} * stored.rows);
    for (unsigned row = firstRow; row <= lastRow; ++row)
        for (unsigned column = firstColumn; column <= lastColumn; ++column)
            box.push_back(levels[row * glyph.width + column]);

    static constexpr unsigned kCodings[] = {0, packed::kRuns, packed::kRuns | packed::kColumns,
                                            packed::kRuns | packed::kChanges,
                                            packed::kRuns | packed::kColumns | packed::kChanges};
    for (unsigned coding : kCodings) {
        if (coding != 0 && options.compress == PixelCompression::None)
            break;
        BitWriter bits;
        WriteCoded(ScanOrder(box, stored.width, stored.rows, coding), coding, options.bpp, bits);
        if (coding == 0 || bits.Size() < stored.bits.Size()) {
            stored.coding = coding;
            stored.bits = std::move(bits);
        }
    }
    return stored;
}
