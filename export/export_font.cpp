#include "export/export_font.h"

#include "charset/exportable_codes.h"
#include "export/files/base_name.h"
#include "export/files/export_files.h"
#include "export/files/in_place_file.h"

bool ExportFont(FTFont* font, std::string& baseName, const std::string& directory, unsigned int height,
                CharCodeList* codes, const ExportOptions& options, const ExportListeners& listeners)
{
    if (FindUnexportableCode(*codes))
        return false;

    font->SetPixelSize(height);
    SanitizeBaseName(baseName);
    // Written in place: a failed export leaves what it got to write.
    InPlaceFile source(directory + baseName + SourceExtension(options.format)), header(directory + baseName + ".h");
    const ExportCharacters characters = ListExportCharacters(*codes, options.codepage);
    return ExportFiles(source, header).WriteFont({font}, baseName, characters, options, listeners) == nullptr;
}
