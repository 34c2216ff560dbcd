#include "export/thread_on_another_core.h"

#include <pthread.h>
#include <sched.h>

#include <atomic>
#include <memory>

std::thread StartOnAnotherCore(std::function<void()> work)
{
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) != 0)
        return std::thread(std::move(work));
    // The thread waits until it has been moved, then lets itself go anywhere again.
    auto moved = std::make_shared<std::atomic<bool>>(false);
    std::thread thread([work = std::move(work), allowed, moved] {
        while (!moved->load())
            std::this_thread::yield();
        pthread_setaffinity_np(pthread_self(), sizeof allowed, &allowed);
        work();
    });
    cpu_set_t others = allowed;
    const int here = sched_getcpu();
    if (here >= 0 && here < CPU_SETSIZE)
        CPU_CLR(here, &others);
    if (CPU_COUNT(&others) > 0)
        pthread_setaffinity_np(thread.native_handle(), sizeof others, &others);
    moved->store(true);
    return thread;
}
