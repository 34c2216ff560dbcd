#pragma once

#include "export/packed/packed_font.h"

#include <cstdint>
#include <vector>

// The code lookup of a packed font: blocks of codes, each every code of a run or a bitmap
// of which codes in its span have glyphs (VT_BLOCK_* in veltrane_font.h), split where that
// takes the fewest bits. `codes` are the glyphs' codes, ascending, each once, at least one.
// Fills font.blocks, blockCount, blockBits and blockFieldBits. Throws std::length_error when
// a field would need more than 24 bits.
void PackCodeBlocks(const std::vector<uint32_t>& codes, PackedFont& font);
