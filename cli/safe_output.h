#pragma once

#include "export/files/output_file.h"

#include <sys/types.h>

#include <string>

// One output file that replaces what its target holds only when the caller commits it,
// so that a failed export leaves the files of the one before untouched.
//
// A target that is, or through symbolic links leads to, a regular file or nothing yet is
// written to a temporary file beside the file it leads to (the links stay). A target
// that leads to anything else, such as a device or a pipe, is written in place.
// Until committed, the temporary file is removed when the SafeOutput goes away or
// SIGINT, SIGTERM or SIGHUP ends the program.
class SafeOutput : public OutputFile
{
public:
    using OutputFile::OutputFile;
    ~SafeOutput() override;

    // Creates the temporary file, or opens the target itself.
    bool Open() override;
    // Closes the stream, noting whether the file it replaces holds the same bytes.
    bool Close() override;
    // Renames the temporary file over the file the target leads to, or removes it when
    // that file holds the same bytes already (which then keeps its modification time).
    // Call under a CleanupSignalBlock when several files must change together.
    bool Commit() override;

private:
    std::string tempPath; // empty when the target is written in place
    std::string replaced; // the file the temporary one replaces
    int cleanupSlot = -1;
    bool unchanged = false;

    bool OpenTemporary(mode_t mode);
    void RemoveTemporary();
};
