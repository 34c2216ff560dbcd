#pragma once

#include <functional>
#include <thread>

// Runs `work` on a new thread that starts on a core other than the caller's, when the
// process may use one. Left to the system, a new thread often waits a millisecond or more
// on its creator's core, as long as the short bursts of work it is meant for take. Once
// started, the thread may move to any core the process may use.
// Throws std::system_error when no thread can be started.
std::thread StartOnAnotherCore(std::function<void()> work);
