#pragma once

#include "charset/export_characters.h"
#include "export/export_options.h"
#include "raster/ft_font.h"

#include <optional>
#include <string>

// For a legacy export of a face that has no legacy 'kern' table but kerns through its
// GPOS table: "the font kerns only through its GPOS table; --kerning auto gives 91 pairs",
// counting the pairs such an export of `characters` would write. Nothing when those would be
// none. The face must be set to the export size.
std::optional<std::string> GposOnlyKerningWarning(FTFont& font, const ExportCharacters& characters,
                                                  const ExportOptions& options);
