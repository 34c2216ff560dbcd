#pragma once

#include "export/packed/bit_writer.h"

#include <cstdint>
#include <vector>

// The binary arithmetic coder the runtime's decode_bit undoes: a 32-bit window on the
// interval's start, renormalised a byte at a time while the interval is narrower than 2^24.
class ArithmeticEncoder
{
public:
    // Codes `bit`, which is 0 with chance `zero` / 256; 0 means certainly 1. A bit of no
    // chance at all is a fault of the caller's model.
    void Encode(unsigned bit, unsigned zero);
    // The fewest bits that decode to what was coded whatever follows them.
    BitWriter Finish();

    // The bits a bit costs at `zero` / 256 of being 0, as the coder nearly spends them.
    static double Cost(unsigned bit, unsigned zero);

private:
    void Emit(uint64_t value, unsigned count);
    void Carry();

    std::vector<uint8_t> bits; // one bit a byte, so that a carry can run back
    uint64_t low = 0;          // the window's start; bit 32 is a carry not yet added
    uint32_t range = 0xFFFFFFFFu;
};
