#include "cli/font_pair_writer.h"

#include "cli/safe_output.h"
#include "cli/temp_file_cleanup.h"
#include "export/export_settings.h"
#include "export/font_header.h"
#include "export/font_source.h"
#include "export/output_writer.h"

#include <memory>

std::optional<std::string> WriteFontPair(FTFont& font, const std::string& path, const std::string& baseName,
                                         const CharCodeList& codes, const ExportOptions& options, FontPairSizes& sizes,
                                         const CompanionFile* companion)
{
    // All are opened before the slow part, so that a file that cannot be written fails
    // the export at once.
    SafeOutput source(path + ".cpp"), header(path + ".h");
    std::unique_ptr<SafeOutput> extra = companion ? std::make_unique<SafeOutput>(companion->path) : nullptr;
    if (!source.Open() || !header.Open())
        return kWriteFailedMessage;
    if (extra && !extra->Open())
        return companion->writeFailed;
    {
        // Declared after `source`, so that on the exception path of a failed render the
        // writer lets go of the stream before the SafeOutput closes and removes it.
        OutputWriter out(source.Stream());
        WriteFontSource(out, font, baseName, codes, options);
        if (!out.Close())
            return kWriteFailedMessage;
    }
    OutputWriter headerOut(header.Stream());
    if (!WriteFontHeader(headerOut, baseName) || !source.Finish() || !header.Finish())
        return kWriteFailedMessage;
    if (extra) {
        if (auto message = companion->write(extra->Stream()))
            return message;
        if (!extra->Finish())
            return companion->writeFailed;
    }
    sizes = {source.Size(), header.Size()};
    // The header first: its bytes follow from the name alone, so it is the right one for
    // the earlier source too, should the source's rename then fail.
    CleanupSignalBlock block;
    if (!header.Commit() || !source.Commit() || (extra && !extra->Commit()))
        return kWriteFailedMessage;
    return std::nullopt;
}
