#pragma once

#include "export/ds/rotations.h"

#include <optional>
#include <string>

// Reads the text of --rotations: items of 0, 90, 180 and 270 separated by commas, blanks
// around an item ignored, each at most once, e.g. "90,270". Returns why the text cannot
// be read (its first item that is none of them or repeats one before it); the rotations
// in the order given otherwise.
std::optional<std::string> ReadRotationList(const std::string& text, RotationList& rotations);
