#pragma once

#include <string>

// Replaces, in place, every byte that is neither a letter or digit in the current
// C locale nor "_" by "_", so the name can be part of C identifiers and file names.
// A multi-byte character becomes as many underscores; the length never changes.
void SanitizeBaseName(std::string& baseName);
