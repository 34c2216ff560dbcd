#pragma once

#include <string>

// The export whose output is committed under tests/export/expected/: the test font,
// a fixed height and a list that covers kerning, a blank glyph and a repeat.
// `directory` ends in "/". Throws FTException like ExportFont.
bool WriteGoldenExport(const std::string& directory);

// Base name of the files WriteGoldenExport writes (".cpp" and ".h").
inline constexpr const char* kGoldenBaseName = "golden_font";
