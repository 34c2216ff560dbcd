#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

// What one run of a program left behind.
struct ProgramResult {
    int status = -1; // exit status; -1 when it did not exit normally
    std::string out; // standard output
    std::string err; // standard error
};

// Runs args[0] (found on PATH when it has no "/") with the other arguments, in `workDir`
// when it is given, with DISPLAY and WAYLAND_DISPLAY removed from the environment as on
// a build server, and waits for it.
ProgramResult RunProgram(const std::vector<std::string>& args, const std::string& workDir = {});

// The same for veltrane-fontgen-export with `args`.
ProgramResult RunExporter(std::vector<std::string> args, const std::string& workDir = {});

// The regular files, links and directories in `dir`, without descending.
std::set<std::string> FileNames(const std::filesystem::path& dir);
