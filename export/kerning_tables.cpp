#include "export/kerning_tables.h"

void WriteKerningTables(OutputWriter& out, unsigned int code, const std::vector<KerningPair>& pairs)
{
    out.Write("static const char char_");
    out.WriteUnsigned(code);
    out.Write("_ktp[] = {");
    for (const KerningPair& pair : pairs) {
        out.WriteUnsigned(static_cast<unsigned char>(pair.prev));
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
