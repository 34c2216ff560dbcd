#pragma once

#include "export/ds/pixel_arrays.h"
#include "export/export_listener.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

// One character as the source file holds it. The file gives the four rotations' records
// the same values, so they are kept once; the pixel arrays are kept per rotation.
struct WrittenGlyph
{
    uint32_t w = 0;
    uint32_t h = 0;
    int32_t xoff = 0;
    int32_t yoff = 0;
    int32_t xadvance = 0;
    std::vector<KerningPair> kerning; // as the two tables hold it, without the closing 0
    bool hasPixels = false;
    TurnedImages pixels; // rotations 0, 90, 180, 270; empty when !hasPixels
};

// Keeps what an export writes, for drawing it afterwards as the firmware would: every
// character's records, kerning table and pixel arrays, and the font records' metrics.
// A character written again replaces what was kept of it.
class WrittenFont : public ExportListener
{
public:
    void CharacterWritten(const WrittenCharacter& written) override;
    void FontRecordsWritten(const FontRecordMetrics& metrics) override { this->metrics = metrics; }

    // Null for a code the export did not write (the font record's chars entry is null).
    const WrittenGlyph* Find(uint32_t code) const
    {
        const auto found = glyphs.find(code);
        return found == glyphs.end() ? nullptr : found->second.get();
    }
    const FontRecordMetrics& Metrics() const { return metrics; }

private:
    std::unordered_map<uint32_t, std::unique_ptr<WrittenGlyph>> glyphs;
    FontRecordMetrics metrics{};
};
