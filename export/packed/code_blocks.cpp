#include "export/packed/code_blocks.h"

#include "export/packed/bit_writer.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace {

// A bitmap spans at most this many codes, so that finding a glyph counts few bits.
constexpr uint32_t kMaxBitmapSpan = 256;

struct Block
{
    size_t first = 0; // index of its first code in the codes
    size_t end = 0;   // past its last
    bool bitmap = false;
};

// Where to split: every code in the block a run with no bitmap, or a bitmap over the span.
// Each block costs about `entryBits`, a bitmap its span more. A run is best taken whole, so
// from each code only the blocks whose span a bitmap may have, and the run to its end,
// are weighed.
std::vector<Block> ChooseBlocks(const std::vector<uint32_t>& codes, uint64_t entryBits)
{
    const size_t n = codes.size();
    std::vector<uint64_t> cost(n + 1, 0); // of the codes from i on
    std::vector<Block> best(n + 1);
    for (size_t i = n; i-- > 0;) {
        cost[i] = std::numeric_limits<uint64_t>::max();
        auto weigh = [&](size_t end) {
            const uint64_t span = uint64_t{codes[end - 1]} - codes[i] + 1;
            const bool bitmap = span != end - i;
            const uint64_t total = entryBits + (bitmap ? span : 0) + cost[end];
            if (total < cost[i]) {
                cost[i] = total;
                best[i] = {i, end, bitmap};
            }
        };
        size_t runEnd = i + 1;
        while (runEnd < n && codes[runEnd] == codes[runEnd - 1] + 1)
            ++runEnd;
        weigh(runEnd);
        for (size_t end = i + 1; end <= n && codes[end - 1] - codes[i] < kMaxBitmapSpan; ++end)
            weigh(end);
    }
    std::vector<Block> blocks;
    for (size_t i = 0; i < n; i = best[i].end)
        blocks.push_back(best[i]);
    return blocks;
}

unsigned FieldBits(uint64_t max)
{
    const unsigned bits = BitWriter::BitsFor(max);
    if (bits > packed::kMaxFieldBits)
        throw std::length_error("the code lookup is too large for a packed font");
    return bits;
}

} // namespace

void PackCodeBlocks(const std::vector<uint32_t>& codes, PackedFont& font)
{
    const uint64_t estimate = BitWriter::BitsFor(codes.back()) + BitWriter::BitsFor(codes.size()) + 8 + 16;
    const std::vector<Block> blocks = ChooseBlocks(codes, estimate);
    uint64_t maxFirst = 0, maxLast = 0, maxGlyph = 0, bitmapBits = 0;
    for (const Block& block : blocks) {
        maxFirst = std::max<uint64_t>(maxFirst, codes[block.first]);
        maxLast = std::max<uint64_t>(maxLast, codes[block.end - 1] - codes[block.first]);
        maxGlyph = std::max<uint64_t>(maxGlyph, block.first);
        if (block.bitmap)
            bitmapBits += codes[block.end - 1] - codes[block.first] + 1;
    }
    font.blockFieldBits = {FieldBits(maxFirst), FieldBits(maxLast), FieldBits(maxGlyph), 0};
    // The bitmaps follow the entries, whose size depends on the bits of a bitmap's position.
    for (unsigned positionBits = 0;; ++positionBits) {
        const unsigned entryBits =
            font.blockFieldBits[0] + font.blockFieldBits[1] + font.blockFieldBits[2] + positionBits;
        const uint64_t lastPosition = bitmapBits ? blocks.size() * entryBits + bitmapBits : 0;
        if (BitWriter::BitsFor(lastPosition) <= positionBits) {
            font.blockFieldBits[packed::kBlockBitmap] = FieldBits(lastPosition);
            font.blockBits = entryBits;
            break;
        }
    }
    font.blockCount = static_cast<unsigned>(blocks.size());
    BitWriter entries, bitmaps;
    const uint64_t entriesEnd = blocks.size() * font.blockBits;
    for (const Block& block : blocks) {
        const uint32_t first = codes[block.first], last = codes[block.end - 1] - first;
        entries.Write(first, font.blockFieldBits[packed::kBlockFirst]);
        entries.Write(last, font.blockFieldBits[packed::kBlockLast]);
        entries.Write(static_cast<uint32_t>(block.first), font.blockFieldBits[packed::kBlockGlyph]);
        entries.Write(block.bitmap ? static_cast<uint32_t>(entriesEnd + bitmaps.Size()) : 0,
                      font.blockFieldBits[packed::kBlockBitmap]);
        if (!block.bitmap)
            continue;
        std::vector<bool> present(last + 1, false);
        for (size_t i = block.first; i < block.end; ++i)
            present[codes[i] - first] = true;
        for (bool bit : present)
            bitmaps.Write(bit, 1);
    }
    entries.Append(bitmaps);
    font.blocks = entries.Bytes();
}
