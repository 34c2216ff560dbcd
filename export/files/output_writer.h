#pragma once

#include "export/files/output_file.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace output_writer_detail {

// Row v holds "0xVV, " padded to 8 bytes, so one fixed-size copy writes a value.
constexpr std::array<std::array<char, 8>, 256> MakeHexTable()
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::array<std::array<char, 8>, 256> table{};
    for (int v = 0; v < 256; ++v)
        table[v] = {'0', 'x', digits[v >> 4], digits[v & 15], ',', ' ', '\0', '\0'};
    return table;
}

inline constexpr auto kHexTable = MakeHexTable();

} // namespace output_writer_detail

// Buffered text output for the generated files. Values are formatted straight into a
// large block that goes to the file with one write when full, so exporting a big font
// costs little more than the glyph rendering and the disk write themselves.
// The file, open and outliving the writer, keeps the stream and any write error.
class OutputWriter
{
public:
    static constexpr size_t kHexText = 6; // "0xAB, "
    static constexpr size_t kHexSlot = 8; // bytes one hex copy touches

    explicit OutputWriter(OutputFile& file);
    // Hands the file what is still buffered, so that a glyph's exception leaves it the
    // sections written before.
    ~OutputWriter() { Flush(); }

    OutputWriter(const OutputWriter&) = delete;
    OutputWriter& operator=(const OutputWriter&) = delete;

    void Write(std::string_view text);
    void WriteChar(char c)
    {
        if (pos == limit)
            Flush();
        *pos++ = c;
    }
    // Plain decimal, no leading zeros or blanks.
    void WriteUnsigned(uint64_t value);
    void WriteSigned(int64_t value);
    // "0xAB, ": one pixel value of a pixel array.
    void WriteHexByte(uint8_t value)
    {
        if (static_cast<size_t>(limit - pos) < kHexSlot)
            Flush();
        pos = PutHex(pos, value);
    }

    // Direct access for long runs of values: Reserve returns where `size` bytes (plus
    // the slack one PutHex needs) can be written, or nullptr when they would not fit
    // into the buffer at all; Commit takes the position after the last byte written.
    char* Reserve(size_t size)
    {
        if (size > kBufferSize - kHexSlot)
            return nullptr;
        if (static_cast<size_t>(limit - pos) < size + kHexSlot)
            Flush();
        return pos;
    }
    void Commit(char* end) { pos = end; }
    static char* PutHex(char* at, uint8_t value)
    {
        std::memcpy(at, output_writer_detail::kHexTable[value].data(), kHexSlot);
        return at + kHexText;
    }

    // Hands the buffered bytes to the file. False once any write has failed.
    bool Flush();

private:
    static constexpr size_t kBufferSize = 1 << 18;

    OutputFile& file;
    std::unique_ptr<char[]> buffer;
    char* pos = nullptr;
    char* limit = nullptr;
};
