#include "process_timing.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

void Fail(const std::string& name, const std::string& what)
{
    std::fprintf(stderr, "%s: %s\n", name.c_str(), what.c_str());
    std::exit(1);
}

double Milliseconds(const std::vector<std::string>& command)
{
    std::vector<char*> argv;
    for (const std::string& arg : command)
        argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        if (!freopen("/dev/null", "w", stdout) || !freopen("/dev/null", "w", stderr))
            _exit(126);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        Fail("bench", "failed: " + command[0]);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void TimeInTurns(std::vector<Run>& runs, int rounds)
{
    for (Run& run : runs)
        Milliseconds(run.command);
    for (int i = 0; i < rounds; ++i)
        for (Run& run : runs)
            run.times.push_back(Milliseconds(run.command));
}
