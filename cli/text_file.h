#pragma once

#include <string>

// The most a text file given to the exporter may hold: strings files are far smaller, and
// a path given by mistake (a disk image, /dev/zero) must not fill the memory.
inline constexpr size_t kMaxTextFileBytes = 64 << 20;

// Reads the whole file into `bytes`; false, with why in `why` ("No such file or directory",
// "is a directory", "is larger than 64 MiB"), when it cannot. Pipes are read to their end.
bool ReadWholeFile(const std::string& path, std::string& bytes, std::string& why);
