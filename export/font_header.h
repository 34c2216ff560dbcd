#pragma once

#include <string>

// Writes the header that declares the four font records font_N_0 .. font_N_270 of
// the source file, inside the guard _FONT_<N upper-cased>_H. `baseName` is the
// sanitized name. False when the file cannot be opened or written.
bool WriteFontHeader(const std::string& headerPath, const std::string& baseName);
