#pragma once

#include <signal.h>

// Temporary files that must not outlive the program: when SIGINT, SIGTERM or SIGHUP ends
// it, the registered files are removed before it dies of that signal as it would have.
// A signal the program was started with ignored (nohup) stays ignored.

// Holds the three signals back while it lives, so that a file is never created or
// renamed without being registered at the same time.
class CleanupSignalBlock
{
public:
    CleanupSignalBlock();
    ~CleanupSignalBlock();
    CleanupSignalBlock(const CleanupSignalBlock&) = delete;
    CleanupSignalBlock& operator=(const CleanupSignalBlock&) = delete;

private:
    sigset_t previous;
};

// Registers `path` (copied) for removal; call under a CleanupSignalBlock. Returns the
// slot to forget it by, or -1 when no slot is free or the path is too long.
int RegisterTempFile(const char* path);
// Stops watching the file of `slot` (no-op for -1); call under a CleanupSignalBlock.
void ForgetTempFile(int slot);
