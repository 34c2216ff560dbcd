#pragma once

#include "export/export_options.h"

#include <optional>
#include <string>
#include <vector>

// Rules of the export that do not depend on how the values were asked for, shared by the
// desktop export command and any other front end.

inline constexpr const char* kInvalidFontSizeMessage = "Invalid font size !";
inline constexpr const char* kFontSizeRangeMessage = "Font size must be in between 6 and 256 !";
// The writer could not open, write or close one of the two files.
inline constexpr const char* kWriteFailedMessage = "Error writing file !";

// Reads the pixel height as typed: trimmed of "\t\n\r\f\v ", then a strtoul base-0 number
// filling the whole text, low 32 bits, 6 to 256. Stores it in `height` and returns nothing
// when valid; otherwise returns the message to show and leaves `height` alone.
// An empty or blank text reads as 0 and so gets the range message.
std::optional<std::string> ParseFontHeight(const std::string& text, unsigned& height);

// The endings a source file may have in `format`, each with its dot, the one its source is
// written under first: ".cpp", or ".c" and ".cpp" for a packed font.
std::vector<std::string> SourceFileEndings(FontFormat format);

// The ending of `format` that `fileName` ends in, ASCII letter case ignored whatever the
// locale, as listed by SourceFileEndings; nothing when it has none.
std::optional<std::string> SourceEndingOf(const std::string& fileName, FontFormat format);

// The base name of the output: the chosen file name less one ending of `format` (see
// SourceEndingOf). This is the one place that takes an ending off: "Font.cpp.cpp" gives
// "Font.cpp", as the desktop's save dialog always had it.
std::string BaseNameFromFileName(const std::string& fileName, FontFormat format);

// Where the export writes: a directory that ends in "/" (the writer uses it as a plain prefix)
// and the base name of the two files.
struct OutputLocation
{
    std::string directory;
    std::string baseName;
};

// Splits a path as a save dialog returns it, or as OUTPUT names the source file of `format`.
// A path without a directory means the current one, "./".
OutputLocation SplitOutputPath(const std::string& path, FontFormat format);
