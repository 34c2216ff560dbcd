#pragma once

#include "charset/char_code_list.h"

#include <optional>
#include <string>

// The generated font records index their characters by an 8-bit code. Returns the
// message for the first code in list order above 255, which makes the whole list
// unexportable, or nothing when every code fits. Callers show it before writing.
std::optional<std::string> FindUnexportableCode(const CharCodeList& codes);
