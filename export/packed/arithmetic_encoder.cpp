#include "export/packed/arithmetic_encoder.h"

#include <cassert>
#include <cmath>

void ArithmeticEncoder::Encode(unsigned bit, unsigned zero)
{
    const uint32_t bound = (range >> 8) * zero;
    if (bit) {
        assert(zero < 256);
        low += bound;
        range -= bound;
    } else {
        assert(zero > 0);
        range = bound;
    }
    if (low >> 32)
        Carry();
    for (; range < (1u << 24); range <<= 8) {
        Emit(low >> 24, 8);
        low = (low << 8) & 0xFFFFFFFFu;
    }
}

BitWriter ArithmeticEncoder::Finish()
{
    // The shortest prefix whose every continuation stays inside [low, low + range).
    for (unsigned count = 1; count <= 32; ++count) {
        const uint64_t unit = uint64_t{1} << (32 - count);
        uint64_t value = (low + unit - 1) / unit * unit;
        if (value + unit > low + range)
            continue;
        if (value >> 32) {
            Carry();
            value &= 0xFFFFFFFFu;
        }
        Emit(value >> (32 - count), count);
        break;
    }
    BitWriter out;
    for (uint8_t bit : bits)
        out.Write(bit, 1);
    return out;
}

double ArithmeticEncoder::Cost(unsigned bit, unsigned zero)
{
    const unsigned share = bit ? 256 - zero : zero;
    return share == 256 ? 0.0 : -std::log2(share / 256.0);
}

void ArithmeticEncoder::Emit(uint64_t value, unsigned count)
{
    while (count-- > 0)
        bits.push_back(static_cast<uint8_t>((value >> count) & 1u));
}

// Adds the carry out of the window to the bits already out: the value coded stays below
// 1, so some bit before takes it.
void ArithmeticEncoder::Carry()
{
    size_t at = bits.size();
    while (at > 0 && bits[at - 1] == 1)
        bits[--at] = 0;
    assert(at > 0);
    bits[at - 1] = 1;
    low &= 0xFFFFFFFFu;
}
