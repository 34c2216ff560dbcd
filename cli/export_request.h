#pragma once

#include "charset/codepage.h"
#include "cli/export_report.h"
#include "export/export_options.h"

#include <optional>
#include <string>

// One export as the command line asks for it, every value still as typed except the
// codepage, which the command line has opened already.
struct ExportRequest {
    std::string fontPath;
    std::string outputPath; // the source file's path, as chosen in the desktop's save dialog
    std::string heightText = "16";
    // Absent: "32-126", unless a sample text gives the list.
    std::optional<std::string> charsText;
    // A UTF-8 sample text whose characters join the list.
    std::optional<std::string> sampleText;
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

    // Whether any option changes the files from what the desktop program writes.
    bool GoesBeyondDesktop() const
    {
        return sampleText || codepage || faceIndex != 0 || kerningGiven || renderGiven;
    }
};

inline constexpr const char* kNoCharactersMessage = "No characters to export !";
inline constexpr const char* kInvalidCharsMessage = "Invalid character codes !";
inline constexpr const char* kNoGlyphMessage = "No glyph for any of the characters !";
inline constexpr const char* kReservedNameMessage = "The name ds_font would replace the firmware's ds_font.h !";
inline constexpr const char* kProofReplacesExportMessage = "The proof image would replace an exported file !";

// Runs the export with the desktop program's rules and messages. Checks in this order,
// each before anything slower: the height text, the character codes (every piece of
// --chars readable, all fitting in 8 bits and, with a codepage, standing for a character
// in it; at least one), the proof text (every character exported), the output name (not
// ds_font, not the proof's), opening the font and setting its size, a glyph for at least
// one code, writing the files and the proof image. The files are replaced only when all
// were written whole (see WriteFontPair).
// Returns the message of the first failure, or nothing when all were written; `report`
// receives what the failure concerns, the warnings and, with `stats`, the table.
std::optional<std::string> RunExport(const ExportRequest& request, ExportReport& report);
