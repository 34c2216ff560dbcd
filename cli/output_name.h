#pragma once

#include "export/export_options.h"

#include <optional>
#include <string>
#include <vector>

// What OUTPUT may be: the source file of the pair, named as the firmware will compile it.

// The endings OUTPUT may have in `format`, any letter case, each with its dot, the one its
// source is written under first: ".cpp", or ".c" and ".cpp" for a packed font.
std::vector<std::string> SourceFileEndings(FontFormat format);

// OUTPUT less the ending of `format` it has, any letter case: "out/Font.c" gives "out/Font"
// for a packed font.
std::string WithoutSourceEnding(const std::string& path, FontFormat format);

// Why OUTPUT cannot name the source file to write in `format` (an existing directory, no
// name before the ending, another ending); nothing when it can.
std::optional<std::string> WhyNotASourceFile(const std::string& path, FontFormat format);

// A warning when an identifier of the pair named `baseName` (sanitized) is one C++ keeps
// for itself, as one holding "__" is.
std::optional<std::string> ReservedIdentifierWarning(const std::string& baseName);

// Why --proof cannot name the image to write: empty, or a directory; nothing when it can.
std::optional<std::string> WhyNotAProofFile(const std::string& path);
