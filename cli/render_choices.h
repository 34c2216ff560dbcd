#pragma once

#include "cli/export_request.h"

#include <CLI/CLI.hpp>

// --hinting, --mono and --gamma, read into `request.render`.
void AddRenderOptions(CLI::App& app, ExportRequest& request);

// After the parse: notes whether any of them was given and refuses the combinations that
// mean nothing (--mono with --hinting light or with --gamma) as CLI::ValidationError.
void CheckRenderChoices(const CLI::App& app, ExportRequest& request);
