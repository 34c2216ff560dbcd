#include "cli/program_run.h"

#include "test_support.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstring>
#include <stdexcept>

extern char** environ;

ProgramResult RunProgram(const std::vector<std::string>& args)
{
    std::vector<char*> argv;
    for (const std::string& arg : args)
        argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::strncmp(*entry, "DISPLAY=", 8) != 0 && std::strncmp(*entry, "WAYLAND_DISPLAY=", 16) != 0)
            envp.push_back(*entry);
    }
    envp.push_back(nullptr);

    // Files rather than pipes: nothing to drain while the program runs.
    TempDir capture;
    const std::string outPath = (capture.Path() / "out").string(), errPath = (capture.Path() / "err").string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t pid = 0;
    const int failed = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0)
        throw std::runtime_error("cannot start " + args[0] + ": " + std::strerror(failed));
    int wstatus = 0;
    waitpid(pid, &wstatus, 0);
    return {WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1, ReadFile(outPath), ReadFile(errPath)};
}

ProgramResult RunExporter(std::vector<std::string> args)
{
    args.insert(args.begin(), VELTRANE_EXPORT_PROGRAM);
    return RunProgram(args);
}
