#include "golden_export.h"

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "raster/ft_font.h"

bool WriteGoldenExport(const std::string& directory)
{
    FTFont font;
    font.LoadFace(VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf");
    // Every glyph of the font: a blank one, kerned pairs in both orders and a positive
    // kerning, ink left of the pen and below the baseline, an 8-bit code whose kerning
    // the char tables cannot reach, a code the font lacks, and a repeat.
    CharCodeList codes = {32, 65, 86, 84, 46, 106, 233, 66, 65};
    std::string name = kGoldenBaseName;
    return ExportFont(&font, name, directory, 16, &codes);
}
