#pragma once

#include "cli/export_request.h"

#include <optional>

// Reads the command line into `request`. Returns the exit status when the program is to
// stop at once: after --help or --version (printed on standard output, status 0) or after
// a usage error (its message and a pointer to --help on standard error, status 2); nothing when the export
// is to run.
std::optional<int> ParseCommandLine(int argc, char** argv, ExportRequest& request);
