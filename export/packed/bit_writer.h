#pragma once

#include <cstdint>
#include <vector>

// Appends values to a stream of bits, most significant bit first, as the packed fonts'
// runtime reads them.
class BitWriter
{
public:
    // The low `count` bits of `value`, at most 32.
    void Write(uint32_t value, unsigned count)
    {
        while (count-- > 0) {
            if (size % 8 == 0)
                bytes.push_back(0);
            if ((value >> count) & 1u)
                bytes.back() |= static_cast<uint8_t>(0x80u >> (size % 8));
            ++size;
        }
    }
    void Append(const BitWriter& other)
    {
        for (uint64_t bit = 0; bit < other.size; ++bit)
            Write(other.bytes[bit / 8] >> (7 - bit % 8), 1);
    }
    // A length as Elias gamma codes length + 1.
    void WriteRun(uint32_t length) { Write(length + 1, 2 * BitsFor(length + 1) - 1); }

    uint64_t Size() const { return size; }
    // The bits written, the last byte filled with zeros.
    const std::vector<uint8_t>& Bytes() const { return bytes; }

    // The bits `value` needs: 0 for 0.
    static unsigned BitsFor(uint64_t value)
    {
        unsigned bits = 0;
        for (; value != 0; value >>= 1)
            ++bits;
        return bits;
    }
    // The bits of an Elias gamma run of `length`.
    static uint64_t RunBits(uint32_t length) { return 2 * BitsFor(length + 1) - 1; }

private:
    std::vector<uint8_t> bytes;
    uint64_t size = 0;
};
