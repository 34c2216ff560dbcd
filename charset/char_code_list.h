#pragma once

#include <cstdint>
#include <vector>

// The character codes to preview and export, in the order the user named them,
// duplicates kept, never sorted.
using CharCodeList = std::vector<uint32_t>;
