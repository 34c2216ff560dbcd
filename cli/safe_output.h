#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>

// One output file that replaces what its target holds only when the caller commits it,
// so that a failed export leaves the files of the one before untouched.
//
// A target that is, or through symbolic links leads to, a regular file or nothing yet is
// written to a temporary file beside the file it leads to (the links stay). A target
// that leads to anything else, such as a device or a pipe, is written in place.
// Until committed, the temporary file is removed when the SafeOutput goes away or
// SIGINT, SIGTERM or SIGHUP ends the program.
class SafeOutput
{
public:
    explicit SafeOutput(std::string target);
    ~SafeOutput();
    SafeOutput(const SafeOutput&) = delete;
    SafeOutput& operator=(const SafeOutput&) = delete;

    // Creates the temporary file, or opens the target itself; false when it cannot.
    bool Open();
    // The open stream, for an OutputWriter that must be closed before Finish.
    FILE* Stream() const { return stream; }
    // Closes the stream; false when a write or the close failed.
    bool Finish();
    // After Finish: renames the temporary file over the file the target leads to, or
    // removes it when that file holds the same bytes already (which then keeps its
    // modification time). False when the rename fails. Call under a CleanupSignalBlock
    // when several files must change together.
    bool Commit();
    // Bytes written, once finished; -1 when the stream cannot tell (a pipe).
    off_t Size() const { return size; }
    const std::string& Target() const { return target; }
    // Why Open, Finish or Commit failed, naming the file or directory and giving the
    // system's reason: "cannot write in \"out/\": No such file or directory".
    const std::string& Problem() const { return problem; }

private:
    std::string target;
    std::string tempPath; // empty when the target is written in place
    std::string replaced; // the file the temporary one replaces
    std::string problem;
    FILE* stream = nullptr;
    int cleanupSlot = -1;
    off_t size = -1;
    bool unchanged = false;

    bool OpenTemporary(mode_t mode);
    bool Failed(const std::string& what, const std::string& path, int error);
    void RemoveTemporary();
};
