#pragma once

#include "export/export_options.h"

#include <optional>
#include <string>

// What OUTPUT may be: the source file of the pair, named as the firmware will compile it.
// The pair's name is SplitOutputPath's (export/desktop/export_settings.h), the desktop program's.

// Why OUTPUT cannot name the source file to write in `format` (an existing directory, no
// name before the ending, another ending); nothing when it can.
std::optional<std::string> WhyNotASourceFile(const std::string& path, FontFormat format);

// A warning when an identifier of the pair named `baseName` (sanitized) is one C++ keeps
// for itself, as one holding "__" is.
std::optional<std::string> ReservedIdentifierWarning(const std::string& baseName);

// Why --proof cannot name the image to write: empty, or a directory; nothing when it can.
std::optional<std::string> WhyNotAProofFile(const std::string& path);
