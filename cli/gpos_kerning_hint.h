#pragma once

#include "charset/char_code_list.h"
#include "export/export_options.h"
#include "raster/ft_font.h"

#include <optional>
#include <string>

// For a legacy export of a face that has no legacy 'kern' table but kerns through its
// GPOS table: "the font kerns only through its GPOS table; --kerning auto gives 91 pairs",
// counting the pairs such an export of `codes` would write. Nothing when those would be
// none. The face must be set to the export size.
std::optional<std::string> GposOnlyKerningWarning(FTFont& font, const CharCodeList& codes,
                                                  const ExportOptions& options);
