#include "golden_export.h"

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "raster/ft_font.h"

bool WriteGoldenExport(const std::string& directory)
{
    FTFont font;
    font.LoadFace("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    // A blank glyph, kerned pairs in both orders, a repeat and a descender.
    CharCodeList codes = {32, 65, 86, 84, 111, 46, 65, 106, 255};
    std::string name = kGoldenBaseName;
    return ExportFont(&font, name, directory, 16, &codes);
}
