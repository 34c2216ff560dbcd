#include "export/files/output_file.h"

#include <cerrno>

OutputFile::~OutputFile()
{
    if (stream != nullptr)
        std::fclose(stream);
}

void OutputFile::Adopt(FILE* opened)
{
    stream = opened;
    std::setvbuf(stream, nullptr, _IONBF, 0);
}

bool OutputFile::Write(const char* data, size_t size)
{
    // After a failure the rest is dropped: the file is wrong anyway, and Close() says so.
    if (stream == nullptr || failed)
        return false;
    if (size > 0 && std::fwrite(data, 1, size, stream) != size)
        return Fail("cannot write", target, errno);
    return true;
}

bool OutputFile::Close()
{
    if (stream == nullptr)
        return false;
    errno = 0; // a write error the stream remembers has no errno left
    if (std::fflush(stream) != 0 || std::ferror(stream))
        Fail("cannot write", target, errno);
    size = ftello(stream);
    if (std::fclose(stream) != 0)
        Fail("cannot write", target, errno);
    stream = nullptr;
    return !failed;
}

bool OutputFile::Fail(std::string action, std::string path, int error)
{
    if (!failed)
        problem = {std::move(action), std::move(path), error};
    failed = true;
    return false;
}
