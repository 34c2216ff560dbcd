#pragma once

#include "export/export_listener.h"
#include "export/rotations.h"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <utility>

// Counts what the source file gets, for the table --stats prints after a success.
class ExportStats : public ExportListener
{
public:
    explicit ExportStats(RotationList rotations = AllRotations()) : rotations(std::move(rotations)) {}

    void CharacterWritten(const WrittenCharacter& written) override;

    // The table: characters, the rotations written when not all four, pixel bytes per
    // rotation and in all, kerning pairs and the bytes of their tables, and the size of
    // each file (-1: not known).
    std::string Table(const std::string& sourceName, off_t sourceSize, const std::string& headerName,
                      off_t headerSize) const;

private:
    RotationList rotations;
    uint64_t characters = 0;
    uint64_t pixelBytesPerRotation = 0;
    uint64_t kerningPairs = 0;
    uint64_t kernedCharacters = 0;
};
