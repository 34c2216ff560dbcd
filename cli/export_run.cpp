#include "cli/export_run.h"

#include "cli/character_in_progress.h"
#include "cli/export_files_writer.h"
#include "cli/export_fonts.h"
#include "cli/export_plan.h"
#include "cli/export_stats.h"
#include "raster/ft_exception.h"

namespace {

// Writes the files and the proof, keeping what --stats and the proof need as it goes.
std::optional<std::string> WriteExport(const ExportRequest& request, const ExportPlan& plan, const ExportFonts& fonts,
                                       CharacterInProgress& inProgress, ExportReport& report)
{
    ExportStats stats(plan.fontPaths, plan.options.rotations);
    WrittenFont written;
    ExportListeners listeners = {&inProgress, &stats};
    std::optional<ProofOutput> proof;
    if (request.proofPath) {
        listeners.push_back(&written);
        proof.emplace(ProofOutput{*request.proofPath, written, *plan.proofLines, plan.height});
    }
    FontPairSizes sizes;
    std::string why;
    if (auto message = WriteExportFiles(FontsOf(fonts), plan.path, plan.baseName, plan.characters, plan.options,
                                        listeners, proof ? &*proof : nullptr, sizes, why)) {
        if (!why.empty())
            report.context.push_back(why);
        return message;
    }
    if (request.stats)
        report.stats = stats.Table(plan.baseName + SourceExtension(plan.options.format), sizes.source,
                                   plan.baseName + ".h", sizes.header);
    return std::nullopt;
}

} // namespace

std::optional<std::string> RunExport(const ExportRequest& request, ExportReport& report)
{
    ExportPlan plan;
    if (auto message = PlanExport(request, plan, report))
        return message;
    CharacterInProgress inProgress;
    try {
        ExportFonts fonts;
        OpenFonts(plan, fonts, report);
        if (auto message = ChooseGlyphs(request, plan, fonts, report))
            return message;
        return WriteExport(request, plan, fonts, inProgress, report);
    } catch (const FTException& e) {
        if (auto where = inProgress.Describe(plan.fontPaths))
            report.context.push_back(*where);
        return e.what();
    }
}
