#include "export/export_font.h"

#include "export/base_name.h"
#include "export/exportable_codes.h"
#include "export/font_header.h"
#include "export/font_source.h"
#include "export/output_writer.h"

bool ExportFont(FTFont* font, std::string& baseName, const std::string& directory, unsigned int height,
                CharCodeList* codes, const ExportOptions& options, const ExportListeners& listeners)
{
    if (FindUnexportableCode(*codes))
        return false;

    font->SetPixelSize(height);
    SanitizeBaseName(baseName);
    const std::string sourcePath = directory + baseName + ".cpp";
    const std::string headerPath = directory + baseName + ".h";

    // If a glyph fails to render, the exception unwinds through `out`, whose
    // destructor flushes and closes the sections written so far.
    OutputWriter out(sourcePath);
    if (!out.IsOpen())
        return false;
    WriteFontSource(out, *font, baseName, ListExportCharacters(*codes, options.codepage), options, listeners);

    // A source that did not reach the disk complete gets no header.
    if (!out.Flush())
        return false;
    // The header is opened (and so emptied) while the source is still open: on ext4,
    // truncating a file right after closing a large one waits for the journal to
    // commit that file's data, which made the export up to a third slower. Should
    // the source's close then fail, the header is left empty and the export fails.
    OutputWriter header(headerPath);
    if (!out.Close() || !header.IsOpen())
        return false;
    return WriteFontHeader(header, baseName, options.rotations);
}
