#pragma once

#include "export/ds/rotations.h"
#include "export/packed/packed_font.h"
#include "raster/render_options.h"

class Codepage;

// Where the kerning tables come from.
enum class KerningMode
{
    Legacy, // FreeType's kerning lookup: the font's legacy 'kern' table
    Gpos,   // the OpenType 'kern' feature, as HarfBuzz shapes each pair
    Auto,   // Gpos when the font's GPOS table has a 'kern' feature, otherwise Legacy
    None,   // no kerning tables at all, as from a font without kerning
};

// How a kerning table writes a previous character of 128 to 255.
enum class PrevCharStyle
{
    Number,      // 242: the desktop program's, which compiles only where char is unsigned
    CharLiteral, // '\xF2': the same byte whether char is signed or unsigned
};

// What the export writes.
enum class FontFormat
{
    Ds,     // the desktop program's .cpp/.h pair for ds_font.h
    Packed, // a .c/.h pair for the C runtime of runtime/veltrane_font.h
};

// The source file's extension of each format.
inline const char* SourceExtension(FontFormat format)
{
    return format == FontFormat::Packed ? ".c" : ".cpp";
}

// Export choices beyond the desktop program's. The defaults give its output byte for byte.
struct ExportOptions
{
    KerningMode kerning = KerningMode::Legacy;
    PrevCharStyle prevCharStyle = PrevCharStyle::Number;
    // The 8-bit codepage the listed codes are bytes of; null: every code is its own
    // Unicode character. Every listed code must have a character in it.
    const Codepage* codepage = nullptr;
    // The rotations whose pixel arrays, character records and font records are written.
    RotationList rotations = AllRotations();
    RenderOptions render; // how every glyph is rendered
    FontFormat format = FontFormat::Ds;
    PackOptions packed; // with FontFormat::Packed
};
