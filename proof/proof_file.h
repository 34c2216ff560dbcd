#pragma once

#include "proof/proof_text.h"
#include "proof/written_font.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

inline constexpr const char* kProofWriteFailedMessage = "Error writing the proof image !";

// Largest proof image written: libpng's readers refuse more than a million pixels a side
// by default, and the picture is held in memory whole.
inline constexpr int64_t kProofMaxSide = 1000000;
inline constexpr int64_t kProofMaxPixels = int64_t{1} << 28;

// Draws the proof of `lines` from what an export at `exportHeight` pixels wrote, a panel
// for each of `rotations` left to right, and writes it to `file` as a PNG. Returns the message when the picture would be too large (nothing
// is then written) or libpng fails; nothing otherwise. The caller closes the file.
std::optional<std::string> WriteProofImage(FILE* file, const WrittenFont& font, const ProofLines& lines,
                                           unsigned exportHeight, const RotationList& rotations = AllRotations());
