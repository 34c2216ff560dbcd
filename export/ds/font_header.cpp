#include "export/ds/font_header.h"

#include "export/ds/rotations.h"

#include <cctype>

void WriteFontHeader(OutputWriter& out, const std::string& baseName, const RotationList& rotations)
{
    std::string guard = baseName;
    for (char& c : guard)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));

    out.Write("#ifndef _FONT_");
    out.Write(guard);
    out.Write("_H\n#define _FONT_");
    out.Write(guard);
    out.Write("_H\n\n#include <ds_font.h>\n");
    for (unsigned rotation : kRotations) {
        if (!HasRotation(rotations, rotation))
            continue;
        out.Write("\nextern const ds_bitmap_font_t font_");
        out.Write(baseName);
        out.WriteChar('_');
        out.WriteUnsigned(rotation);
        out.WriteChar(';');
    }
    out.Write("\n\n#endif\n");
}
