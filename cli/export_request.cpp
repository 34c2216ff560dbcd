#include "cli/export_request.h"

#include "cli/character_in_progress.h"
#include "cli/code_list.h"
#include "cli/export_stats.h"
#include "cli/font_file_check.h"
#include "cli/font_pair_writer.h"
#include "cli/gpos_kerning_hint.h"
#include "cli/missing_glyphs.h"
#include "cli/strike_heights.h"
#include "cli/unread_pieces.h"
#include "export/base_name.h"
#include "export/export_settings.h"
#include "proof/proof_file.h"
#include "raster/ft_exception.h"
#include "raster/ft_font.h"

#include <filesystem>

namespace {

// The generated files include the firmware's own ds_font.h, which an export of that name
// would replace.
constexpr const char* kConsumerHeaderName = "ds_font";

// Whether two paths name the same file, links followed as far as they exist.
bool SameFile(const std::string& a, const std::string& b)
{
    std::error_code ignored;
    return std::filesystem::weakly_canonical(a, ignored) == std::filesystem::weakly_canonical(b, ignored);
}

// Opens the face, saying why when the file does not give it.
void LoadFont(FTFont& font, const ExportRequest& request, ExportReport& report)
{
    try {
        font.LoadFace(request.fontPath.c_str(), request.faceIndex);
    } catch (const FTException&) {
        report.context.push_back(WhyFontCannotLoad(request.fontPath, request.faceIndex));
        throw;
    }
    if (auto unknown = font.LookUpInOwnEncoding())
        report.warnings.push_back("the font is encoded in " + *unknown +
                                  ", which iconv does not know as an 8-bit encoding: no character finds its glyphs");
}

// Fails an export that would hold no real glyph; warns of codes without one and, unless
// --kerning chose, of kerning that only the GPOS table holds. The face must be sized.
std::optional<std::string> CheckGlyphs(FTFont& font, const CharCodeList& codes, const ExportRequest& request,
                                       const ExportOptions& options, ExportReport& report)
{
    const MissingGlyphs missing = FindMissingGlyphs(font, codes, options);
    if (missing.all) {
        report.context.push_back(Quoted(request.fontPath) + " has no glyph for any of " + missing.ranges + missing.encodingNote);
        return kNoGlyphMessage;
    }
    if (auto warning = MissingGlyphWarning(missing))
        report.warnings.push_back(*warning);
    if (request.kerning == KerningMode::Legacy && !request.kerningGiven) {
        if (auto warning = GposOnlyKerningWarning(font, codes, options))
            report.warnings.push_back(*warning);
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> RunExport(const ExportRequest& request, ExportReport& report)
{
    unsigned height = 0;
    if (auto message = ParseFontHeight(request.heightText, height))
        return message;
    CharCodeList codes;
    std::vector<std::string> unreadPieces;
    auto listMessage = ListCodes(request, codes, unreadPieces, report.context);
    if (!unreadPieces.empty()) {
        report.context = UnreadPieceLines(unreadPieces);
        return kInvalidCharsMessage;
    }
    if (listMessage)
        return listMessage;
    if (codes.empty())
        return kNoCharactersMessage;
    OutputLocation output = SplitOutputPath(request.outputPath);
    SanitizeBaseName(output.baseName);
    if (output.baseName == kConsumerHeaderName) {
        report.context.push_back("the generated files include <ds_font.h>; give OUTPUT another name, e.g. out/MyFont.cpp");
        return kReservedNameMessage;
    }

    const std::string path = output.directory + output.baseName;
    if (request.proofPath && (SameFile(*request.proofPath, path + ".cpp") || SameFile(*request.proofPath, path + ".h")))
        return kProofReplacesExportMessage;

    ExportOptions options;
    options.kerning = request.kerning;
    options.codepage = request.codepage ? &*request.codepage : nullptr;
    options.render = request.render;
    // Beyond the desktop's output, tables compile whatever the signedness of char.
    if (request.GoesBeyondDesktop())
        options.prevCharStyle = PrevCharStyle::CharLiteral;
    CharacterInProgress inProgress;
    ExportStats stats;
    options.listeners = {&inProgress, &stats};
    ProofLines proofLines;
    WrittenFont written; // kept only for a proof
    if (request.proofPath) {
        if (auto message = ReadProofText(request.proofText, codes, options, proofLines))
            return message;
        options.listeners.push_back(&written);
    }
    try {
        FTFont font;
        LoadFont(font, request, report);
        try {
            font.SetPixelSize(height);
        } catch (const FTException&) {
            if (auto note = StrikeHeightsNote(font.Face()))
                report.context.push_back(*note);
            throw;
        }
        if (auto message = CheckGlyphs(font, codes, request, options, report))
            return message;
        FontPairSizes sizes;
        std::optional<CompanionFile> proof;
        if (request.proofPath)
            proof = CompanionFile{*request.proofPath, kProofWriteFailedMessage, [&](FILE* file) {
                                      return WriteProofImage(file, written, proofLines, height);
                                  }};
        std::string why;
        if (auto message = WriteFontPair(font, path, output.baseName, codes, options, sizes, why,
                                         proof ? &*proof : nullptr)) {
            if (!why.empty())
                report.context.push_back(why);
            return message;
        }
        if (request.stats)
            report.stats = stats.Table(output.baseName + ".cpp", sizes.source, output.baseName + ".h", sizes.header);
    } catch (const FTException& e) {
        if (auto where = inProgress.Describe(request.fontPath))
            report.context.push_back(*where);
        return e.what();
    }
    return std::nullopt;
}
