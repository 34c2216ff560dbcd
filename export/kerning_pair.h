#pragma once

#include <cstdint>

// One kerning pair of an exported character: the character that stands before it
// (low 8 bits of its code) and the pen adjustment between the two in whole pixels.
struct KerningPair
{
    char prev;
    int8_t delta;

    bool operator==(const KerningPair&) const = default;
};
