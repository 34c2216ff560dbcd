#pragma once

#include "charset/export_characters.h"
#include "export/export_listener.h"
#include "export/export_options.h"
#include "export/files/output_file.h"
#include "raster/ft_font.h"

#include <string>

// The files of one export, written in this order and committed together: the bitmap
// font source, its header, and an extra file made from what the export wrote (a proof
// image), which the caller writes into. The kind of the files says how they are
// written (in place, or beside their targets until committed); they stay the caller's.
//
// Each step returns the file that failed, its Problem() set, or nullptr.
class ExportFiles
{
public:
    ExportFiles(OutputFile& source, OutputFile& header, OutputFile* extra = nullptr)
        : source(source), header(header), extra(extra)
    {
    }

    // Opens every file, so that one that cannot be written fails before the slow part.
    // Files written in place are better left to WriteFont, which opens each only once
    // the one before is whole.
    OutputFile* OpenAll();
    // Writes and closes the source, then the header, opening each not yet open. Only a
    // source that reached its file whole gets a header. The face must be set to the
    // export size and `baseName` sanitized (see WriteFontSource, which takes the fonts).
    // Throws FTException when a glyph cannot be rendered; the source, still open, then
    // holds the sections of the characters before it.
    OutputFile* WriteFont(const std::vector<FTFont*>& fonts, const std::string& baseName,
                          const ExportCharacters& characters, const ExportOptions& options,
                          const ExportListeners& listeners);
    // Commits every closed file; call it once nothing can fail the export any more.
    OutputFile* Commit();

private:
    OutputFile& source;
    OutputFile& header;
    OutputFile* extra;
};
