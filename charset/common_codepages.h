#pragma once

#include "charset/codepage.h"

#include <vector>

// The 8-bit codepages firmware texts are most often kept in, the most used first: Windows
// (CP1252, then CP1250 to CP1258), ISO-8859, KOI8, then DOS. Those this iconv does not know
// are left out.
std::vector<Codepage> CommonCodepages();
