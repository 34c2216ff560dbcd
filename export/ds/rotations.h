#pragma once

#include <algorithm>
#include <array>
#include <vector>

// The four rotations every character and font record can be written in, in file order.
inline constexpr std::array<unsigned, 4> kRotations = {0, 90, 180, 270};

// The rotations an export writes, each once, in the order they were chosen. The files
// hold them in kRotations order whatever this order; the proof draws them in it.
using RotationList = std::vector<unsigned>;

inline RotationList AllRotations()
{
    return RotationList(kRotations.begin(), kRotations.end());
}

inline bool HasRotation(const RotationList& rotations, unsigned rotation)
{
    return std::find(rotations.begin(), rotations.end(), rotation) != rotations.end();
}
