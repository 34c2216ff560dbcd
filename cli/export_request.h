#pragma once

#include "charset/codepage.h"
#include "cli/font_height_suffix.h"
#include "export/export_options.h"

#include <optional>
#include <string>
#include <vector>

// --glyphs FONT[#FACE][@PX]:LIST[=>CODE]: the characters LIST names, taken from FONT, under
// the codes from CODE on or, without it, under their bytes in the codepage (their own code
// points in a Unicode font).
struct GlyphSetArgument
{
    std::string asTyped;
    ExtraFont font;
    std::string list;
    std::optional<std::string> firstByte; // CODE as typed
};

// One export as the command line asks for it, every value still as typed except the
// codepage, which the command line has opened already.
struct ExportRequest
{
    std::string fontPath;
    std::string outputPath; // the source file's path, as chosen in the desktop's save dialog
    std::string heightText = "16";
    // Absent: "32-126", unless a sample text gives the list.
    std::optional<std::string> charsText;
    // A UTF-8 sample text whose characters join the list.
    std::optional<std::string> sampleText;
    // UTF-8 files, such as the firmware's strings, whose characters join the list after the text's.
    std::vector<std::string> textFiles;
    // The 8-bit codepage the codes are bytes of; absent: every code is its own character.
    std::optional<Codepage> codepage;
    long faceIndex = 0;
    KerningMode kerning = KerningMode::Legacy;
    bool kerningGiven = false; // --kerning was given, if only as legacy: no hint at GPOS kerning
    RenderOptions render;
    bool renderGiven = false; // --hinting, --mono or --gamma was given, if only as the default
    // Where to save a proof image of the export, and its UTF-8 text (absent: the exported
    // characters, 16 to a line).
    std::optional<std::string> proofPath;
    std::optional<std::string> proofText;
    // Print the table of what was written after a success.
    bool stats = false;
    // Characters from other fonts: sets under bytes of their own, then, for a listed
    // character the font has no glyph for, the first fallback font that has one.
    std::vector<GlyphSetArgument> glyphSets;
    std::vector<ExtraFont> fallbacks;
    // The rotations to write, in the order given (the proof's); absent: all four.
    std::optional<RotationList> rotations;
    FontFormat format = FontFormat::Ds;
    PackOptions pack; // with FontFormat::Packed

    // Whether the codes are Unicode code points, as a packed font without a codepage has
    // them; otherwise bytes.
    bool UnicodeCodes() const { return format == FontFormat::Packed && !codepage; }

    // Whether the text or text files give characters.
    bool HasTexts() const { return sampleText || !textFiles.empty(); }

    // Whether any option changes the files from what the desktop program writes.
    bool GoesBeyondDesktop() const
    {
        return HasTexts() || codepage || faceIndex != 0 || kerningGiven || renderGiven || !glyphSets.empty() ||
               !fallbacks.empty() || rotations || format != FontFormat::Ds;
    }
};
