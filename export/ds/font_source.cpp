#include "export/ds/font_source.h"

#include "export/ds/char_records.h"
#include "export/ds/font_records.h"
#include "export/ds/kerning_tables.h"
#include "export/ds/pixel_arrays.h"
#include "export/export_listener.h"
#include "export/kerning/kerning_source.h"

void WriteFontSource(OutputWriter& out, FTFont& font, const std::string& baseName, const ExportCharacters& characters,
                     const ExportOptions& options, const ExportListeners& listeners)
{
    WriteFontSource(out, std::vector<FTFont*>{&font}, baseName, characters, options, listeners);
}

void WriteFontSource(OutputWriter& out, const std::vector<FTFont*>& fonts, const std::string& baseName,
                     const ExportCharacters& characters, const ExportOptions& options, const ExportListeners& listeners)
{
    out.Write("#include <");
    out.Write(baseName);
    out.Write(".h>\n\n");

    const KerningByFont kerning(fonts, characters, options);
    CharTable table{};
    for (const ExportCharacter& listed : characters) {
        const auto& [code, character, font] = listed;
        for (ExportListener* listener : listeners)
            listener->CharacterStarted(listed);
        FTGlyph glyph;
        fonts.at(font)->RenderGlyph(character, glyph, options.render);
        table[code] = true;

        // Everything of this character is written before the next render replaces
        // the glyph slot's bitmap.
        const std::vector<KerningPair> pairs = kerning.PairsOf(listed);
        if (!pairs.empty())
            WriteKerningTables(out, code, pairs, options.prevCharStyle);
        if (glyph.bitmap->buffer != nullptr)
            WritePixelArrays(out, code, *glyph.bitmap, options.rotations);
        WriteCharRecords(out, code, glyph, !pairs.empty(), options.rotations);
        const WrittenCharacter written{code, character, font, glyph, pairs};
        for (ExportListener* listener : listeners)
            listener->CharacterWritten(written);
    }

    const FontRecordMetrics metrics = ToRecordMetrics(CurrentLineMetrics(fonts.front()->Face()));
    WriteFontRecords(out, baseName, metrics, table, options.rotations);
    for (ExportListener* listener : listeners)
        listener->FontRecordsWritten(metrics);
}
