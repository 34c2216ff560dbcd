#pragma once

#include "export/packed/bit_writer.h"
#include "export/packed/packed_font.h"

// A glyph's pixels as a packed font stores them: quantized to the options' bits a pixel,
// cut to the box of the pixels that are not 0, and coded as whichever of the runtime's
// codings is shortest (only plain values without compression).
struct StoredPixels
{
    unsigned width = 0; // 0 with `rows` for a glyph with nothing to draw
    unsigned rows = 0;
    int left = 0; // pen to the box's left column
    int top = 0;  // baseline up to the box's top row
    unsigned coding = 0;
    BitWriter bits;
    std::vector<uint8_t> box; // the quantized values of the box, row by row
};

StoredPixels StorePixels(const PackGlyph& glyph, const PackOptions& options);
