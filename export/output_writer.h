#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
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
// large block that goes to the stream with one fwrite when full, so exporting a big
// font costs little more than the glyph rendering and the disk write themselves.
// Write and close errors are remembered; Close() reports them.
class OutputWriter
{
public:
    // Opens `path` like fopen with mode "w" (created, or emptied when it exists).
    explicit OutputWriter(const std::string& path);
    // Writes to a stream that the caller keeps owning and closes itself.
    explicit OutputWriter(FILE* stream);
    // Flushes and closes what is still open; errors found here are lost, so callers
    // that care call Close() first. Runs on the exception path as well.
    ~OutputWriter();

    OutputWriter(const OutputWriter&) = delete;
    OutputWriter& operator=(const OutputWriter&) = delete;

    bool IsOpen() const { return stream != nullptr; }

    void Write(std::string_view text);
    void WriteChar(char c)
    {
        if (pos == limit)
            Drain();
        *pos++ = c;
    }
    // Plain decimal, no leading zeros or blanks.
    void WriteUnsigned(uint64_t value);
    void WriteSigned(int64_t value);
    // "0xAB, ": one pixel value of a pixel array.
    void WriteHexByte(uint8_t value)
    {
        if (limit - pos < kHexSlot)
            Drain();
        std::memcpy(pos, output_writer_detail::kHexTable[value].data(), kHexSlot);
        pos += kHexText;
    }

    // Hands the buffered bytes to the stream. False once any write has failed.
    bool Flush();
    // Flushes and, for a stream this writer opened, closes it. True when every write
    // and the close succeeded. The writer is closed afterwards in any case.
    bool Close();

private:
    static constexpr size_t kBufferSize = 1 << 16;
    static constexpr int kHexText = 6; // "0xAB, "
    static constexpr int kHexSlot = 8; // table rows are padded for one 8-byte copy

    void Drain();

    FILE* stream = nullptr;
    bool ownsStream = false;
    bool failed = false;
    std::unique_ptr<char[]> buffer;
    char* pos = nullptr;
    char* limit = nullptr;
};
