#include "export/ds/kerning_tables.h"

namespace {

void WritePrevChar(OutputWriter& out, unsigned char prev, PrevCharStyle style)
{
    if (prev < 128 || style == PrevCharStyle::Number) {
        out.WriteUnsigned(prev);
        return;
    }
    constexpr char kHexDigits[] = "0123456789ABCDEF";
    const char literal[] = {'\'', '\\', 'x', kHexDigits[prev >> 4], kHexDigits[prev & 15], '\''};
    out.Write({literal, sizeof literal});
}

} // namespace

void WriteKerningTables(OutputWriter& out, unsigned int code, const std::vector<KerningPair>& pairs,
                        PrevCharStyle style)
{
    out.Write("static const char char_");
    out.WriteUnsigned(code);
    out.Write("_ktp[] = {");
    for (const KerningPair& pair : pairs) {
        WritePrevChar(out, static_cast<unsigned char>(pair.prev & 0xFF), style);
        out.Write(", ");
    }
    out.Write("0};\n");

    out.Write("static const int8_t char_");
    out.WriteUnsigned(code);
    out.Write("_ktd[] = {");
    for (const KerningPair& pair : pairs) {
        out.WriteSigned(pair.delta);
        out.Write(", ");
    }
    out.Write("0};\n");
}
