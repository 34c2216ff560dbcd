#include "export/ds/font_records.h"

#include "export/ds/rotations.h"

LineMetrics CurrentLineMetrics(FT_Face face)
{
    const FT_Size_Metrics& m = face->size->metrics;
    return LineMetrics{m.height, m.ascender, m.descender};
}

FontRecordMetrics ToRecordMetrics(const LineMetrics& metrics)
{
    // C++ division truncates toward zero.
    return FontRecordMetrics{static_cast<unsigned long>(metrics.height / 64), metrics.ascender / 64,
                             metrics.descender / 64};
}

void WriteFontRecords(OutputWriter& out, const std::string& baseName, const FontRecordMetrics& metrics,
                      const CharTable& written, const RotationList& rotations)
{
    for (unsigned rotation : kRotations) {
        if (!HasRotation(rotations, rotation))
            continue;
        out.Write("\n\nconst ds_bitmap_font_t font_");
        out.Write(baseName);
        out.WriteChar('_');
        out.WriteUnsigned(rotation);
        out.Write(" = {\n.height = ");
        out.WriteUnsigned(metrics.height);
        out.Write(",\n.ascender = ");
        out.WriteSigned(metrics.ascender);
        out.Write(",\n.descender = ");
        out.WriteSigned(metrics.descender);
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
