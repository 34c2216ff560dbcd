#pragma once

#include "cli/export_plan.h"
#include "cli/export_report.h"
#include "cli/export_request.h"
#include "raster/ft_font.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

// The fonts of an export, as ExportPlan::fontPaths lists them, each set to the export size.
using ExportFonts = std::vector<std::unique_ptr<FTFont>>;

// Opens every font of the plan, each its face (FONT#N), and sets its size. Throws
// FTException on the first that fails, with which file and why in `report`.
void OpenFonts(const ExportPlan& plan, ExportFonts& fonts, ExportReport& report);

// Gives each character the main font has no glyph for to the first fallback font that
// has one. Fails when a --glyphs character has no glyph in its font, or when no character
// has a glyph at all; warns of the characters still without one and, unless --kerning
// chose, of kerning that only the main font's GPOS table holds.
std::optional<std::string> ChooseGlyphs(const ExportRequest& request, ExportPlan& plan, const ExportFonts& fonts,
                                        ExportReport& report);

// The fonts as the writers take them.
std::vector<FTFont*> FontsOf(const ExportFonts& fonts);
