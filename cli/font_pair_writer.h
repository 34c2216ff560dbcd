#pragma once

#include "charset/char_code_list.h"
#include "export/export_options.h"
#include "raster/ft_font.h"

#include <sys/types.h>

#include <string>

// The sizes of the two files as written; -1 when a stream could not tell (a pipe).
struct FontPairSizes {
    off_t source = -1;
    off_t header = -1;
};

// Writes the bitmap font source `path` + ".cpp" and its header `path` + ".h" through
// SafeOutput: both replace the earlier files only once both are complete, so a failure,
// whatever it is, leaves those as they were. `baseName` must be sanitized and the face
// set to the export size (see WriteFontSource).
// Returns false when a file cannot be created, written, closed or renamed into place;
// throws FTException when a glyph cannot be rendered.
bool WriteFontPair(FTFont& font, const std::string& path, const std::string& baseName, const CharCodeList& codes,
                   const ExportOptions& options, FontPairSizes& sizes);
