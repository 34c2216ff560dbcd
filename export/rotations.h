#pragma once

#include <array>

// The four rotations every character and font record is written in, in file order.
inline constexpr std::array<unsigned, 4> kRotations = {0, 90, 180, 270};
