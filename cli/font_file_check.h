#pragma once

#include <string>

// Why FreeType could not open face `faceIndex` of the font file `path`, in the system's
// words where there are any: "\"a.ttf\": No such file or directory", "\"a\" is a
// directory", "\"a.png\" is not a font file FreeType can read", "\"a.ttc\" has no face 2:
// the file has 2 faces, 0 to 1". Asks the file system and FreeType afresh, so it is
// meant for after the load failed.
std::string WhyFontCannotLoad(const std::string& path, long faceIndex);
