#include "cli/font_pair_writer.h"

#include "cli/safe_output.h"
#include "cli/temp_file_cleanup.h"
#include "export/font_header.h"
#include "export/font_source.h"
#include "export/output_writer.h"

bool WriteFontPair(FTFont& font, const std::string& path, const std::string& baseName, const CharCodeList& codes,
                   const ExportOptions& options, FontPairSizes& sizes)
{
    // Both are opened before the slow part, so that a header that cannot be written
    // fails the export at once.
    SafeOutput source(path + ".cpp"), header(path + ".h");
    if (!source.Open() || !header.Open())
        return false;
    {
        // Declared after `source`, so that on the exception path of a failed render the
        // writer lets go of the stream before the SafeOutput closes and removes it.
        OutputWriter out(source.Stream());
        WriteFontSource(out, font, baseName, codes, options);
        if (!out.Close())
            return false;
    }
    OutputWriter headerOut(header.Stream());
    if (!WriteFontHeader(headerOut, baseName) || !source.Finish() || !header.Finish())
        return false;
    sizes = {source.Size(), header.Size()};
    // The header first: its bytes follow from the name alone, so it is the right one for
    // the earlier source too, should the source's rename then fail.
    CleanupSignalBlock block;
    return header.Commit() && source.Commit();
}
