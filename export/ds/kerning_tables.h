#pragma once

#include "export/export_options.h"
#include "export/files/output_writer.h"
#include "export/kerning/kerning_pair.h"

#include <vector>

// Writes the two parallel tables of `code`, each closed by a 0 entry:
//   static const char char_C_ktp[] = {P1, P2, 0};
//   static const int8_t char_C_ktd[] = {D1, D2, 0};
// A previous character below 128 is always a number; one of 128 to 255 as `style` says.
// Only called for a character that has at least one pair.
void WriteKerningTables(OutputWriter& out, unsigned int code, const std::vector<KerningPair>& pairs,
                        PrevCharStyle style = PrevCharStyle::Number);
