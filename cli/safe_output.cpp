#include "cli/safe_output.h"

#include "cli/temp_file_cleanup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

namespace {

// As many links as the kernel follows before giving up with ELOOP.
constexpr int kMaxLinks = 40;

// The path the target leads to through symbolic links (the last one when they loop).
std::string FollowLinks(std::string path)
{
    for (int hop = 0; hop < kMaxLinks; ++hop) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            break;
        const fs::path link = fs::read_symlink(path, error);
        if (error)
            break;
        path = (link.is_absolute() ? link : fs::path(path).parent_path() / link).string();
    }
    return path;
}

// "dir/.NAME.XXXXXX" for mkstemp, hidden from the build's globs; NAME is cut short
// enough that the temporary name fits wherever the target's name does.
std::string TempTemplate(const std::string& file)
{
    const fs::path path(file);
    std::string name = path.filename().string();
    name.resize(std::min<size_t>(name.size(), 240));
    name.insert(0, 1, '.');
    name.append(".XXXXXX");
    return (path.parent_path() / name).string();
}

bool SameBytes(const std::string& a, const std::string& b)
{
    struct Closer
    {
        void operator()(FILE* f) const { std::fclose(f); }
    };
    const std::unique_ptr<FILE, Closer> fa(std::fopen(a.c_str(), "rb")), fb(std::fopen(b.c_str(), "rb"));
    if (!fa || !fb)
        return false;
    constexpr size_t kChunk = 1 << 16;
    const auto bufferA = std::make_unique<char[]>(kChunk), bufferB = std::make_unique<char[]>(kChunk);
    for (;;) {
        const size_t na = std::fread(bufferA.get(), 1, kChunk, fa.get());
        const size_t nb = std::fread(bufferB.get(), 1, kChunk, fb.get());
        if (na != nb || std::memcmp(bufferA.get(), bufferB.get(), na) != 0)
            return false;
        if (na < kChunk)
            return !std::ferror(fa.get()) && !std::ferror(fb.get());
    }
}

// The directory a file goes into, as "dir/" ("./" for the current one).
std::string DirectoryOf(const std::string& file)
{
    std::string directory = fs::path(file).parent_path().string();
    if (directory.empty())
        return "./";
    return directory.ends_with('/') ? directory : directory + "/";
}

} // namespace

SafeOutput::~SafeOutput()
{
    RemoveTemporary();
}

bool SafeOutput::Open()
{
    const std::string destination = FollowLinks(Target());
    struct stat status = {};
    const bool exists = stat(destination.c_str(), &status) == 0;
    const int statError = errno;
    if (exists && S_ISREG(status.st_mode)) {
        replaced = destination;
        return OpenTemporary(status.st_mode & 07777);
    }
    if (!exists && statError == ENOENT) {
        replaced = destination;
        const mode_t mask = umask(0);
        umask(mask);
        return OpenTemporary(0666 & ~mask);
    }
    // Directories fail here as they always did; devices and pipes take the bytes.
    FILE* opened = std::fopen(Target().c_str(), "w");
    if (opened == nullptr && errno == ENOTDIR)
        return Fail("cannot write in", DirectoryOf(Target()), errno);
    if (opened == nullptr)
        return Fail("cannot write", Target(), errno);
    Adopt(opened);
    return true;
}

bool SafeOutput::OpenTemporary(mode_t mode)
{
    std::string path = TempTemplate(replaced);
    CleanupSignalBlock block;
    const int fd = mkostemp(path.data(), O_CLOEXEC);
    if (fd < 0)
        return Fail("cannot write in", DirectoryOf(replaced), errno);
    cleanupSlot = RegisterTempFile(path.c_str());
    tempPath = path;
    errno = 0; // a full table of temporary files has no errno
    FILE* opened = nullptr;
    if (cleanupSlot < 0 || fchmod(fd, mode) != 0 || (opened = fdopen(fd, "w")) == nullptr) {
        const int error = errno;
        close(fd);
        return Fail("cannot write in", DirectoryOf(replaced), error);
    }
    Adopt(opened);
    return true;
}

bool SafeOutput::Close()
{
    const bool closed = OutputFile::Close();
    unchanged = closed && !tempPath.empty() && SameBytes(tempPath, replaced);
    return closed;
}

bool SafeOutput::Commit()
{
    if (tempPath.empty())
        return true;
    if (unchanged) {
        RemoveTemporary();
        return true;
    }
    if (std::rename(tempPath.c_str(), replaced.c_str()) != 0)
        return Fail("cannot replace", replaced, errno);
    ForgetTempFile(cleanupSlot);
    cleanupSlot = -1;
    tempPath.clear();
    return true;
}

void SafeOutput::RemoveTemporary()
{
    if (tempPath.empty())
        return;
    CleanupSignalBlock block;
    unlink(tempPath.c_str());
    ForgetTempFile(cleanupSlot);
    cleanupSlot = -1;
    tempPath.clear();
}
