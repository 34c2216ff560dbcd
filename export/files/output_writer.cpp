#include "export/files/output_writer.h"

#include <charconv>

OutputWriter::OutputWriter(OutputFile& file)
    : file(file), buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)), pos(buffer.get()),
      limit(pos + kBufferSize)
{
}

void OutputWriter::Write(std::string_view text)
{
    while (!text.empty()) {
        if (pos == limit)
            Flush();
        size_t room = static_cast<size_t>(limit - pos);
        size_t n = text.size() < room ? text.size() : room;
        std::memcpy(pos, text.data(), n);
        pos += n;
        text.remove_prefix(n);
    }
}

void OutputWriter::WriteUnsigned(uint64_t value)
{
    char digits[24];
    auto result = std::to_chars(digits, digits + sizeof digits, value);
    Write(std::string_view(digits, static_cast<size_t>(result.ptr - digits)));
}

void OutputWriter::WriteSigned(int64_t value)
{
    char digits[24];
    auto result = std::to_chars(digits, digits + sizeof digits, value);
    Write(std::string_view(digits, static_cast<size_t>(result.ptr - digits)));
}

bool OutputWriter::Flush()
{
    const size_t pending = static_cast<size_t>(pos - buffer.get());
    pos = buffer.get();
    return file.Write(buffer.get(), pending);
}
