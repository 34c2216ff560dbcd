#include "export/font_records.h"

#include "export/rotations.h"

LineMetrics CurrentLineMetrics(FT_Face face)
{
    const FT_Size_Metrics& m = face->size->metrics;
    return LineMetrics{m.height, m.ascender, m.descender};
}

void WriteFontRecords(OutputWriter& out, const std::string& baseName, const LineMetrics& metrics,
                      const CharTable& written)
{
    // C++ division truncates toward zero, unlike the shift used for glyph values.
    const FT_Pos height = metrics.height / 64;
    const FT_Pos ascender = metrics.ascender / 64;
    const FT_Pos descender = metrics.descender / 64;

    for (unsigned rotation : kRotations) {
        out.Write("\n\nconst ds_bitmap_font_t font_");
        out.Write(baseName);
        out.WriteChar('_');
        out.WriteUnsigned(rotation);
        out.Write(" = {\n.height = ");
        out.WriteUnsigned(static_cast<unsigned long>(height));
        out.Write(",\n.ascender = ");
        out.WriteSigned(ascender);
        out.Write(",\n.descender = ");
        out.WriteSigned(descender);
        out.Write(",\n.chars = {\n");
        for (unsigned code = 0; code < written.size(); ++code) {
            if (written[code]) {
                out.Write("&char_");
                out.WriteUnsigned(code);
                out.WriteChar('_');
                out.WriteUnsigned(rotation);
                out.Write(",\n");
            } else {
                out.Write("nullptr,\n");
            }
        }
        out.Write("}\n};\n");
    }
}
