#pragma once

#include "charset/export_characters.h"
#include "export/ds/font_records.h"
#include "export/kerning/kerning_pair.h"
#include "export/packed/packed_font.h"
#include "raster/ft_font.h"

#include <cstdint>
#include <vector>

// One character as the source file gets it: the values of its records, its kerning
// tables and its pixel arrays. Valid only during the call that hands it over.
struct WrittenCharacter
{
    uint32_t code;      // the listed code, which names its identifiers
    char32_t character; // the Unicode character rendered for it
    unsigned font;      // the export's font it was rendered from: 0 the main font
    // w = bitmap->width, h = bitmap->rows, xoff, yoff, xadvance; the pixel arrays, when
    // bitmap->buffer is not null, are what TurnGlyph makes of the bitmap.
    const FTGlyph& glyph;
    const std::vector<KerningPair>& kerning;
};

// Follows an export as it is written, for reports and pictures of what was written.
class ExportListener
{
public:
    virtual ~ExportListener() = default;
    // Before the character is rendered: a failure from here on concerns it.
    virtual void CharacterStarted(const ExportCharacter& character) { (void)character; }
    virtual void CharacterWritten(const WrittenCharacter& written) { (void)written; }
    // The values of the four font records, after the last character.
    virtual void FontRecordsWritten(const FontRecordMetrics& metrics) { (void)metrics; }
    // A packed font, once packed, before its source is written.
    virtual void FontPacked(const PackedFont& font) { (void)font; }
};

// Told, in this order, about every character as it is written.
using ExportListeners = std::vector<ExportListener*>;
