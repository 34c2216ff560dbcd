#include "cli/temp_file_cleanup.h"

#include <unistd.h>

#include <climits>
#include <cstring>

namespace {

// An export has two files in flight; a few more slots cost nothing.
constexpr int kSlots = 4;
constexpr int kCleanupSignals[] = {SIGINT, SIGTERM, SIGHUP};

// Read by the signal handler, so plain storage: a slot's path is complete before its
// flag is set, and both change only while the signals are blocked.
char slotPaths[kSlots][PATH_MAX];
volatile sig_atomic_t slotUsed[kSlots];
bool handlerInstalled = false;

void RemoveFilesAndDie(int signal)
{
    for (int slot = 0; slot < kSlots; ++slot) {
        if (slotUsed[slot])
            unlink(slotPaths[slot]);
    }
    // SA_RESETHAND has restored the default action; it takes effect once this returns.
    raise(signal);
}

void InstallHandler()
{
    for (int signal : kCleanupSignals) {
        struct sigaction current
        {
        };
        if (sigaction(signal, nullptr, &current) != 0 || current.sa_handler == SIG_IGN)
            continue;
        struct sigaction action
        {
        };
        action.sa_handler = RemoveFilesAndDie;
        sigfillset(&action.sa_mask);
        action.sa_flags = SA_RESETHAND;
        sigaction(signal, &action, nullptr);
    }
    handlerInstalled = true;
}

} // namespace

CleanupSignalBlock::CleanupSignalBlock()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (int signal : kCleanupSignals)
        sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, &previous);
}

CleanupSignalBlock::~CleanupSignalBlock()
{
    sigprocmask(SIG_SETMASK, &previous, nullptr);
}

int RegisterTempFile(const char* path)
{
    if (!handlerInstalled)
        InstallHandler();
    const size_t length = std::strlen(path);
    if (length >= PATH_MAX)
        return -1;
    for (int slot = 0; slot < kSlots; ++slot) {
        if (!slotUsed[slot]) {
            std::memcpy(slotPaths[slot], path, length + 1);
            slotUsed[slot] = 1;
            return slot;
        }
    }
    return -1;
}

void ForgetTempFile(int slot)
{
    if (slot >= 0)
        slotUsed[slot] = 0;
}
