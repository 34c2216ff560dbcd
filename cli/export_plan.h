#pragma once

#include "charset/export_characters.h"
#include "cli/export_report.h"
#include "cli/export_request.h"
#include "export/export_options.h"
#include "proof/proof_text.h"

#include <optional>
#include <string>
#include <vector>

// What an export will write, worked out from the request before any font is opened.
struct ExportPlan
{
    unsigned height = 0;
    // Every exported character, each with the font it comes from (an index of fontPaths).
    ExportCharacters characters;
    // The main font, then the font of each --glyphs set, then the fallback fonts in order.
    std::vector<std::string> fontPaths;
    std::vector<unsigned> fontHeights; // the pixel height of each font of fontPaths
    std::vector<long> fontFaces;       // the face of each font of fontPaths
    size_t firstFallback = 1;          // index of the first fallback font in fontPaths
    ExportOptions options;
    std::string baseName;                 // sanitized: names the pair and its identifiers
    std::string path;                     // the pair's path less ".cpp" and ".h"
    std::optional<ProofLines> proofLines; // with --proof
};

// Checks the request and plans the export, in this order: the height, the characters
// (every piece of --chars readable, each code fitting in 8 bits and, with a codepage,
// standing for a character in it; then the --glyphs sets, see AddGlyphSets; at least one
// character), the proof text (every character exported), the output name (not ds_font,
// not the proof's; a warning for identifiers C++ reserves) and the proof's (a file), the
// extra fonts' own heights (FONT@PX). Returns the message of the first failure, what it
// concerns, naming the option and value, in `report`.
std::optional<std::string> PlanExport(const ExportRequest& request, ExportPlan& plan, ExportReport& report);
