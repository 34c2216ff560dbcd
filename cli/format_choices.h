#pragma once

#include "cli/export_request.h"

#include <CLI/CLI.hpp>

// --format, --bpp and --compress, read into `request.format` and `request.pack`.
void AddFormatOptions(CLI::App& app, ExportRequest& request);

// After the parse (and CheckRenderChoices): refuses as CLI::ValidationError --bpp and
// --compress without --format packed, --rotations with it, and --mono with more than
// 1 bit a pixel; --mono alone makes a packed font 1 bit a pixel.
void CheckFormatChoices(const CLI::App& app, ExportRequest& request);
