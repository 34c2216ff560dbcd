#pragma once
// Whole processes timed side by side, for the benches that compare the exporter with a peer.

#include <string>
#include <vector>

// Prints "NAME: what" to standard error and exits 1.
[[noreturn]] void Fail(const std::string& name, const std::string& what);

// Runs the command to its end with its output thrown away; returns the wall time in ms.
// A command that fails ends the bench.
double Milliseconds(const std::vector<std::string>& command);

double Median(std::vector<double> times);

struct Run
{
    std::string name;
    std::vector<std::string> command;
    std::vector<double> times;
};

// A warm-up of each (page cache, dynamic linker, node's compile cache), then `rounds` turns
// in which every run goes once, so that the machine's other load weighs on all alike.
void TimeInTurns(std::vector<Run>& runs, int rounds);
