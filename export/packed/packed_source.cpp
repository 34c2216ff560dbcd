#include "export/packed/packed_source.h"

#include <cctype>

namespace {

// "static const uint8_t NAME[] = {", the bytes sixteen to a line, "};"; nothing for no bytes.
void WriteByteArray(OutputWriter& out, const char* name, const std::vector<uint8_t>& bytes)
{
    if (bytes.empty())
        return;
    out.Write("static const uint8_t ");
    out.Write(name);
    out.Write("[] = {");
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (i % 16 == 0)
            out.Write("\n    ");
        out.WriteHexByte(bytes[i]);
    }
    out.Write("\n};\n\n");
}

void WriteMember(OutputWriter& out, const char* name, const std::string& value)
{
    out.Write("    .");
    out.Write(name);
    out.Write(" = ");
    out.Write(value);
    out.Write(",\n");
}

void WriteMember(OutputWriter& out, const char* name, long value)
{
    WriteMember(out, name, std::to_string(value));
}

template <typename Values>
void WriteListMember(OutputWriter& out, const char* name, const Values& values)
{
    std::string list = "{";
    for (auto value : values) {
        if (list.size() > 1)
            list += ", ";
        list += std::to_string(value);
    }
    list += "}";
    WriteMember(out, name, list);
}

std::string ArrayOrNull(const char* name, const std::vector<uint8_t>& bytes)
{
    return bytes.empty() ? "NULL" : name;
}

const char* KerningFormName(packed::KerningForm form)
{
    switch (form) {
    case packed::KerningForm::Pairs:
        return "VT_KERNING_PAIRS";
    case packed::KerningForm::Classes:
        return "VT_KERNING_CLASSES";
    case packed::KerningForm::None:
        break;
    }
    return "VT_KERNING_NONE";
}

} // namespace

void WritePackedFontSource(OutputWriter& out, const std::string& baseName, const PackedFont& font)
{
    out.Write("#include <");
    out.Write(baseName);
    out.Write(".h>\n\n");
    WriteByteArray(out, "glyph_records", font.records);
    WriteByteArray(out, "glyph_pixels", font.pixels);
    WriteByteArray(out, "code_blocks", font.blocks);
    WriteByteArray(out, "kerning_data", font.kerning);
    WriteByteArray(out, "pixel_model", font.model);

    out.Write("const vt_font_t font_");
    out.Write(baseName);
    out.Write(" = {\n");
    WriteMember(out, "bpp", font.bpp);
    WriteMember(out, "coverage_scale", font.coverageScale);
    WriteMember(out, "record_bits", font.recordBits);
    WriteMember(out, "pixel_shift", font.pixelShift);
    WriteListMember(out, "field_bits", font.fieldBits);
    WriteMember(out, "keys", font.keys == packed::Keys::Unicode ? "VT_KEYS_UNICODE" : "VT_KEYS_BYTES");
    WriteMember(out, "block_bits", font.blockBits);
    WriteListMember(out, "block_field_bits", font.blockFieldBits);
    WriteMember(out, "glyph_bits", font.glyphBits);
    WriteMember(out, "kerning_form", KerningFormName(font.kerningForm));
    WriteListMember(out, "kerning_class_bits", font.kerningClassBits);
    WriteMember(out, "kerning_delta_bits", font.kerningDeltaBits);
    WriteMember(out, "kerning_delta_min", font.kerningDeltaMin);
    WriteMember(out, "model_bits", font.modelBits);
    WriteListMember(out, "model_width", font.modelWidth);
    WriteListMember(out, "model_shift", font.modelShift);
    WriteMember(out, "model_value_bits", font.modelValueBits);
    WriteMember(out, "height", static_cast<long>(font.metrics.height));
    WriteMember(out, "ascender", font.metrics.ascender);
    WriteMember(out, "descender", font.metrics.descender);
    WriteListMember(out, "field_min", font.fieldMin);
    WriteMember(out, "kerning_columns", font.kerningColumns);
    WriteMember(out, "block_count", font.blockCount);
    WriteListMember(out, "kerning_entries", font.kerningEntries);
    WriteMember(out, "records", ArrayOrNull("glyph_records", font.records));
    WriteMember(out, "pixels", ArrayOrNull("glyph_pixels", font.pixels));
    WriteMember(out, "blocks", ArrayOrNull("code_blocks", font.blocks));
    WriteMember(out, "kerning", ArrayOrNull("kerning_data", font.kerning));
    WriteMember(out, "kerning_rights", font.kerningRights);
    WriteMember(out, "kerning_deltas", font.kerningDeltas);
    WriteMember(out, "model", ArrayOrNull("pixel_model", font.model));
    out.Write("};\n");
}

void WritePackedFontHeader(OutputWriter& out, const std::string& baseName)
{
    std::string guard = "VELTRANE_FONT_" + baseName + "_H";
    for (char& c : guard)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    out.Write("#ifndef " + guard + "\n#define " + guard + "\n\n#include <veltrane_font.h>\n\n");
    out.Write("#ifdef __cplusplus\nextern \"C\" {\n#endif\n\n");
    out.Write("extern const vt_font_t font_" + baseName + ";\n\n");
    out.Write("#ifdef __cplusplus\n}\n#endif\n\n#endif\n");
}
