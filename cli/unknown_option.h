#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

// The first argument of `args` (the program's name left out) that looks like an option
// `app` does not have, as a usage error names it: "unknown option --hieght; did you mean
// --height?". Nothing when every option is known. Values of the options that take one
// and everything after "--" are not options.
std::optional<std::string> UnknownOptionMessage(const CLI::App& app, const std::vector<std::string>& args);
