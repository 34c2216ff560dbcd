#include "cli/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

bool ReadWholeFile(const std::string& path, std::string& bytes, std::string& why)
{
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        why = std::strerror(errno);
        return false;
    }
    struct stat status = {};
    if (fstat(fd, &status) == 0 && S_ISDIR(status.st_mode)) {
        close(fd);
        why = "is a directory";
        return false;
    }
    bytes.clear();
    char chunk[65536];
    ssize_t got = 0;
    while ((got = read(fd, chunk, sizeof chunk)) != 0) {
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 || bytes.size() + static_cast<size_t>(got) > kMaxTextFileBytes) {
            why = got < 0 ? std::strerror(errno) : "is larger than 64 MiB";
            close(fd);
            return false;
        }
        bytes.append(chunk, static_cast<size_t>(got));
    }
    close(fd);
    return true;
}
