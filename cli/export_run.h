#pragma once

#include "cli/export_report.h"
#include "cli/export_request.h"

#include <optional>
#include <string>

// Runs the export the command line asks for, with the desktop program's rules and
// messages: plan (PlanExport: height, characters, proof text, output name), open the
// fonts and set their size (OpenFonts), choose each character's glyph (ChooseGlyphs),
// then write the files and the proof image, which replace the earlier ones only when all
// were written whole (WriteExportFiles). Returns the message of the first failure, or
// nothing when all were written; `report` receives what the failure concerns, the
// warnings and, with --stats, the table.
std::optional<std::string> RunExport(const ExportRequest& request, ExportReport& report);
