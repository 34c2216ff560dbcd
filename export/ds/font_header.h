#pragma once

#include "export/ds/rotations.h"
#include "export/files/output_writer.h"

#include <string>

// Writes the header that declares the font records font_N_0 .. font_N_270 of the source
// file that `rotations` names, in kRotations order, inside the guard _FONT_<N upper-cased>_H.
// `baseName` is the sanitized name.
void WriteFontHeader(OutputWriter& out, const std::string& baseName, const RotationList& rotations);
