#include "cli/font_pair_writer.h"

#include "cli/export_report.h"
#include "cli/safe_output.h"
#include "cli/temp_file_cleanup.h"
#include "export/export_settings.h"
#include "export/font_header.h"
#include "export/font_source.h"
#include "export/output_writer.h"

#include <cerrno>
#include <cstring>
#include <memory>

namespace {

// For a write the OutputWriter or libpng saw fail: the file and, when known, the reason.
std::string CannotWrite(const SafeOutput& file, int error)
{
    std::string why = "cannot write " + Quoted(file.Target());
    return error != 0 ? why + ": " + std::strerror(error) : why;
}

} // namespace

std::optional<std::string> WriteFontPair(FTFont& font, const std::string& path, const std::string& baseName,
                                         const ExportCharacters& characters, const ExportOptions& options,
                                         const ExportListeners& listeners, FontPairSizes& sizes, std::string& why,
                                         const CompanionFile* companion)
{
    const auto fail = [&why](std::string problem, const std::string& message) {
        why = std::move(problem);
        return std::optional<std::string>(message);
    };
    // All are opened before the slow part, so that a file that cannot be written fails
    // the export at once.
    SafeOutput source(path + ".cpp"), header(path + ".h");
    std::unique_ptr<SafeOutput> extra = companion ? std::make_unique<SafeOutput>(companion->path) : nullptr;
    for (SafeOutput* file : {&source, &header}) {
        if (!file->Open())
            return fail(file->Problem(), kWriteFailedMessage);
    }
    if (extra && !extra->Open())
        return fail(extra->Problem(), companion->writeFailed);
    {
        // Declared after `source`, so that on the exception path of a failed render the
        // writer lets go of the stream before the SafeOutput closes and removes it.
        OutputWriter out(source.Stream());
        WriteFontSource(out, font, baseName, characters, options, listeners);
        if (!out.Close())
            return fail(CannotWrite(source, out.Error()), kWriteFailedMessage);
    }
    OutputWriter headerOut(header.Stream());
    if (!WriteFontHeader(headerOut, baseName, options.rotations))
        return fail(CannotWrite(header, headerOut.Error()), kWriteFailedMessage);
    for (SafeOutput* file : {&source, &header}) {
        if (!file->Finish())
            return fail(file->Problem(), kWriteFailedMessage);
    }
    if (extra) {
        errno = 0; // libpng keeps no errno of its own
        if (auto message = companion->write(extra->Stream()))
            return fail(*message == companion->writeFailed ? CannotWrite(*extra, errno) : "", *message);
        if (!extra->Finish())
            return fail(extra->Problem(), companion->writeFailed);
    }
    sizes = {source.Size(), header.Size()};
    // The header first: its bytes follow from the name alone, so it is the right one for
    // the earlier source too, should the source's rename then fail.
    CleanupSignalBlock block;
    for (SafeOutput* file : {&header, &source, extra.get()}) {
        if (file != nullptr && !file->Commit())
            return fail(file->Problem(), kWriteFailedMessage);
    }
    return std::nullopt;
}
