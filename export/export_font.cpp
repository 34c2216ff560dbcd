#include "export/export_font.h"

#include "export/base_name.h"
#include "export/char_records.h"
#include "export/exportable_codes.h"
#include "export/font_header.h"
#include "export/font_records.h"
#include "export/kerning_pairs.h"
#include "export/kerning_tables.h"
#include "export/output_writer.h"
#include "export/pixel_arrays.h"

namespace {

// The codes in list order with repeats left out (first place kept): each character is
// written once, as the generated identifiers must be unique. Every code is below 256
// here, since lists with larger codes are refused first.
CharCodeList WithoutRepeats(const CharCodeList& codes)
{
    CharCodeList unique;
    CharTable seen{};
    for (uint32_t code : codes) {
        if (!seen[code]) {
            seen[code] = true;
            unique.push_back(code);
        }
    }
    return unique;
}

} // namespace

bool ExportFont(FTFont* font, std::string& baseName, const std::string& directory, unsigned int height,
                CharCodeList* codes)
{
    if (FindUnexportableCode(*codes))
        return false;

    font->SetPixelSize(height);
    SanitizeBaseName(baseName);
    const std::string sourcePath = directory + baseName + ".cpp";
    const std::string headerPath = directory + baseName + ".h";

    // If a glyph fails to render, the exception unwinds through `out`, whose
    // destructor flushes and closes the sections written so far.
    OutputWriter out(sourcePath);
    if (!out.IsOpen())
        return false;

    out.Write("#include <");
    out.Write(baseName);
    out.Write(".h>\n\n");

    const CharCodeList unique = WithoutRepeats(*codes);
    CharTable written{};
    for (uint32_t code : unique) {
        FTGlyph glyph;
        font->RenderGlyph(code, glyph);
        written[code] = true;

        // Everything of this character is written before the next render replaces
        // the glyph slot's bitmap.
        const std::vector<KerningPair> pairs = CollectKerningPairs(font, &unique, code);
        if (!pairs.empty())
            WriteKerningTables(out, code, pairs);
        if (glyph.bitmap->buffer != nullptr)
            WritePixelArrays(out, code, *glyph.bitmap);
        WriteCharRecords(out, code, glyph, !pairs.empty());
    }

    WriteFontRecords(out, baseName, CurrentLineMetrics(font->Face()), written);
    // A source that did not reach the disk complete gets no header.
    if (!out.Flush())
        return false;
    // The header is opened (and so emptied) while the source is still open: on ext4,
    // truncating a file right after closing a large one waits for the journal to
    // commit that file's data, which made the export up to a third slower. Should
    // the source's close then fail, the header is left empty and the export fails.
    OutputWriter header(headerPath);
    if (!out.Close() || !header.IsOpen())
        return false;
    return WriteFontHeader(header, baseName);
}
