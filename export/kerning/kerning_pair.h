#pragma once

#include <cstdint>

// One kerning pair of an exported character: the listed code of the character that stands
// before it and the pen adjustment between the two in whole pixels.
struct KerningPair
{
    uint32_t prev;
    int8_t delta;

    bool operator==(const KerningPair&) const = default;
};
