#include "export/output_writer.h"

#include <cerrno>
#include <charconv>

OutputWriter::OutputWriter(const std::string& path)
    : stream(std::fopen(path.c_str(), "w")), ownsStream(true),
      buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)), pos(buffer.get()), limit(pos + kBufferSize)
{
    // The writer does its own buffering; a second buffer in stdio would only copy.
    if (stream != nullptr)
        std::setvbuf(stream, nullptr, _IONBF, 0);
}

OutputWriter::OutputWriter(FILE* stream)
    : stream(stream), ownsStream(false),
      buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)), pos(buffer.get()), limit(pos + kBufferSize)
{
}

OutputWriter::~OutputWriter()
{
    Close();
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
    if (stream == nullptr) {
        pos = buffer.get(); // closed or never opened: nothing can be written
        return false;
    }
    size_t pending = static_cast<size_t>(pos - buffer.get());
    // After a failure the rest is dropped: the file is wrong anyway, and the caller
    // learns of it from Close().
    if (pending > 0 && !failed && std::fwrite(buffer.get(), 1, pending, stream) != pending)
        Fail();
    pos = buffer.get();
    return !failed;
}

void OutputWriter::Fail()
{
    if (!failed)
        error = errno;
    failed = true;
}

bool OutputWriter::Close()
{
    if (stream == nullptr)
        return false;
    Flush();
    if (std::fflush(stream) != 0 || std::ferror(stream))
        Fail();
    if (ownsStream && std::fclose(stream) != 0)
        Fail();
    stream = nullptr;
    return !failed;
}
