#include "export/font_source.h"

#include "charset/codepage.h"
#include "export/char_records.h"
#include "export/export_listener.h"
#include "export/font_records.h"
#include "export/kerning_source.h"
#include "export/kerning_tables.h"
#include "export/pixel_arrays.h"

namespace {

// The codes in list order with repeats left out (first place kept): each character is
// written once, as the generated identifiers must be unique.
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

char32_t CharacterFor(uint32_t code, const ExportOptions& options)
{
    if (options.codepage == nullptr)
        return code;
    return options.codepage->CharacterOf(static_cast<uint8_t>(code)).value_or(0);
}

void WriteFontSource(OutputWriter& out, FTFont& font, const std::string& baseName, const CharCodeList& codes,
                     const ExportOptions& options)
{
    out.Write("#include <");
    out.Write(baseName);
    out.Write(".h>\n\n");

    const CharCodeList unique = WithoutRepeats(codes);
    const std::unique_ptr<KerningSource> kerning = MakeKerningSource(font, unique, options);
    CharTable table{};
    for (uint32_t code : unique) {
        const char32_t character = CharacterFor(code, options);
        for (ExportListener* listener : options.listeners)
            listener->CharacterStarted(code, character);
        FTGlyph glyph;
        font.RenderGlyph(character, glyph, options.render);
        table[code] = true;

        // Everything of this character is written before the next render replaces
        // the glyph slot's bitmap.
        const std::vector<KerningPair> pairs = kerning->PairsOf(code);
        if (!pairs.empty())
            WriteKerningTables(out, code, pairs, options.prevCharStyle);
        if (glyph.bitmap->buffer != nullptr)
            WritePixelArrays(out, code, *glyph.bitmap);
        WriteCharRecords(out, code, glyph, !pairs.empty());
        const WrittenCharacter written{code, character, glyph, pairs};
        for (ExportListener* listener : options.listeners)
            listener->CharacterWritten(written);
    }

    const FontRecordMetrics metrics = ToRecordMetrics(CurrentLineMetrics(font.Face()));
    WriteFontRecords(out, baseName, metrics, table);
    for (ExportListener* listener : options.listeners)
        listener->FontRecordsWritten(metrics);
}
