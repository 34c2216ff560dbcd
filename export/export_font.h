#pragma once

#include "charset/char_code_list.h"
#include "export/export_listener.h"
#include "export/export_options.h"
#include "raster/ft_font.h"

#include <string>

// Renders every listed character at `height` pixels and writes the bitmap font source
// directory + N + ".cpp" and its header directory + N + ".h", N being `baseName`
// sanitized in place (see SanitizeBaseName). `directory` is a plain prefix.
//
// Returns false, with nothing written, when the list holds a code above 255
// (FindUnexportableCode tells which) or the source cannot be opened; false as well
// when a write or close fails or the header cannot be written. Each code is written
// once, at its first place in the list.
// Throws FTException when the size cannot be set (before any file is touched) or a
// glyph cannot be rendered; the source then holds the sections of the characters
// before it, closed, and no header is written.
bool ExportFont(FTFont* font, std::string& baseName, const std::string& directory, unsigned int height,
                CharCodeList* codes, const ExportOptions& options = {}, const ExportListeners& listeners = {});
