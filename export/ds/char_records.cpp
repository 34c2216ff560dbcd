#include "export/ds/char_records.h"

#include "export/ds/rotations.h"

void WriteCharRecords(OutputWriter& out, unsigned int code, const FTGlyph& glyph, bool hasKerning,
                      const RotationList& rotations)
{
    const bool hasPixels = glyph.bitmap->buffer != nullptr;
    for (unsigned rotation : kRotations) {
        if (!HasRotation(rotations, rotation))
            continue;
        out.Write("static const ds_bitmap_font_char_t char_");
        out.WriteUnsigned(code);
        out.WriteChar('_');
        out.WriteUnsigned(rotation);
        out.Write(" = \n{\n.w = ");
        out.WriteUnsigned(glyph.bitmap->width);
        out.Write(",\n.h = ");
        out.WriteUnsigned(glyph.bitmap->rows);
        out.Write(",\n.xoff = ");
        out.WriteSigned(glyph.left);
        out.Write(",\n.yoff = ");
        out.WriteSigned(glyph.top);
        out.Write(",\n.xadvance = ");
        out.WriteSigned(glyph.advanceX);
        out.Write(",\n");
        if (hasKerning) {
            out.Write(".kerning_table_prev = char_");
            out.WriteUnsigned(code);
            out.Write("_ktp,\n.kerning_table_delta = char_");
            out.WriteUnsigned(code);
            out.Write("_ktd,\n");
        } else {
            out.Write(".kerning_table_prev = nullptr,\n.kerning_table_delta = nullptr,\n");
        }
        if (hasPixels) {
            out.Write(".pixels = char_");
            out.WriteUnsigned(code);
            out.Write("_pixels_");
            out.WriteUnsigned(rotation);
            out.WriteChar('\n');
        } else {
            out.Write(".pixels = nullptr\n");
        }
        out.Write("};\n\n\n");
    }
}
