#pragma once

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
