#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What one run of a program left behind.
struct ProgramResult
{
    int status = -1; // exit status; -1 when it did not exit normally
    std::string out; // standard output
    std::string err; // standard error
};

// Runs args[0] (found on PATH when it has no "/") with the other arguments and waits for it,
// without DISPLAY and WAYLAND_DISPLAY, as on a build server.
ProgramResult RunProgram(const std::vector<std::string>& args);

// The same for veltrane-fontgen-export with `args`.
ProgramResult RunExporter(std::vector<std::string> args);
