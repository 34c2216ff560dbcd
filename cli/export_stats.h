#pragma once

#include "export/ds/rotations.h"
#include "export/export_listener.h"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Counts what the source file gets, for the table --stats prints after a success.
class ExportStats : public ExportListener
{
public:
    // The export's fonts, as WrittenCharacter::font indexes them: with more than one, the
    // table tells how many glyphs each gave. The rotations written, when not all four, too.
    explicit ExportStats(std::vector<std::string> fontPaths, RotationList rotations = AllRotations())
        : fontPaths(std::move(fontPaths)), glyphsOf(this->fontPaths.size()), rotations(std::move(rotations))
    {
    }

    void CharacterWritten(const WrittenCharacter& written) override;
    void FontPacked(const PackedFont& font) override;

    // The table: characters, the rotations written when not all four, pixel bytes per
    // rotation and in all, kerning pairs and the bytes of their tables, and the size of
    // each file (-1: not known). For a packed font: its bits a pixel and its flash bytes
    // on a 32-bit target by part instead of pixel and table bytes.
    std::string Table(const std::string& sourceName, off_t sourceSize, const std::string& headerName,
                      off_t headerSize) const;

private:
    std::vector<std::string> fontPaths;
    std::vector<uint64_t> glyphsOf; // per font
    RotationList rotations;
    uint64_t characters = 0;
    uint64_t pixelBytesPerRotation = 0;
    uint64_t kerningPairs = 0;
    uint64_t kernedCharacters = 0;
    // A packed font's bits a pixel and flash bytes by part; empty for a ds pair.
    unsigned packedBpp = 0;
    std::vector<std::pair<std::string, uint64_t>> flashParts;
};
