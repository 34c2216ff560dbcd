#pragma once

#include "charset/char_code_list.h"

#include <optional>
#include <string>

// What the codes of an export are keys of.
enum class CodeSpace
{
    Bytes,  // the ds format's records and codepage fonts index their characters by an 8-bit code
    Unicode // a Unicode font: any code point but the surrogates
};

// Returns the message for the first code in list order that `space` cannot hold, which makes
// the whole list unexportable, or nothing when every code fits. Callers show it before
// writing.
std::optional<std::string> FindUnexportableCode(const CharCodeList& codes, CodeSpace space = CodeSpace::Bytes);
