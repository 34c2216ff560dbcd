#include "cli/export_files_writer.h"

#include "cli/export_report.h"
#include "cli/safe_output.h"
#include "cli/temp_file_cleanup.h"
#include "export/desktop/export_settings.h"
#include "export/files/export_files.h"
#include "proof/proof_file.h"

#include <cerrno>
#include <cstring>

namespace {

// "cannot write \"out/Font.h\": No space left on device"; without the reason when unknown.
std::string Described(const OutputProblem& problem)
{
    std::string why = problem.action + " " + Quoted(problem.path);
    return problem.error != 0 ? why + ": " + std::strerror(problem.error) : why;
}

} // namespace

std::optional<std::string> WriteExportFiles(const std::vector<FTFont*>& fonts, const std::string& path,
                                            const std::string& baseName, const ExportCharacters& characters,
                                            const ExportOptions& options, const ExportListeners& listeners,
                                            const ProofOutput* proof, FontPairSizes& sizes, std::string& why)
{
    const auto fail = [&why](const OutputFile& file, const char* message) {
        why = Described(file.Problem());
        return std::optional<std::string>(message);
    };
    SafeOutput source(path + SourceExtension(options.format)), header(path + ".h");
    std::optional<SafeOutput> proofFile;
    if (proof)
        proofFile.emplace(proof->path);
    ExportFiles files(source, header, proofFile ? &*proofFile : nullptr);
    if (const OutputFile* failed = files.OpenAll())
        return fail(*failed, proofFile && failed == &*proofFile ? kProofWriteFailedMessage : kWriteFailedMessage);
    if (const OutputFile* failed = files.WriteFont(fonts, baseName, characters, options, listeners))
        return fail(*failed, kWriteFailedMessage);
    if (proofFile) {
        errno = 0; // libpng keeps no errno of its own
        if (auto message = WriteProofImage(proofFile->Stream(), proof->font, proof->lines, proof->exportHeight,
                                           options.rotations)) {
            if (*message == kProofWriteFailedMessage)
                why = Described({"cannot write", proofFile->Target(), errno});
            return message;
        }
        if (!proofFile->Close())
            return fail(*proofFile, kProofWriteFailedMessage);
    }
    sizes = {source.Size(), header.Size()};
    // No signal ends the program between two renames.
    CleanupSignalBlock block;
    if (const OutputFile* failed = files.Commit())
        return fail(*failed, kWriteFailedMessage);
    return std::nullopt;
}
