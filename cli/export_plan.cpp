#include "cli/export_plan.h"

#include "charset/number_text.h"
#include "charset/unicode_text.h"
#include "cli/code_list.h"
#include "cli/glyph_sets.h"
#include "cli/output_name.h"
#include "cli/unread_pieces.h"
#include "export/desktop/export_settings.h"
#include "export/files/base_name.h"
#include "proof/proof_file.h"

#include <filesystem>

namespace {

constexpr const char* kNoCharactersMessage = "No characters to export !";
constexpr const char* kInvalidCharsMessage = "Invalid character codes !";
constexpr const char* kReservedNameMessage = "The name ds_font would replace the firmware's ds_font.h !";
constexpr const char* kProofReplacesExportMessage = "The proof image would replace an exported file !";

// The generated files include the firmware's own ds_font.h, which an export of that name
// would replace.
constexpr const char* kConsumerHeaderName = "ds_font";

// Whether two paths name the same file, links followed as far as they exist.
bool SameFile(const std::string& a, const std::string& b)
{
    std::error_code ignored;
    return std::filesystem::weakly_canonical(a, ignored) == std::filesystem::weakly_canonical(b, ignored);
}

// Which options gave the empty list, as the user typed them.
std::string NoCharactersLine(const ExportRequest& request)
{
    std::string given;
    if (request.charsText)
        given = "--chars " + QuotedShort(*request.charsText, 40);
    if (request.sampleText)
        given += (given.empty() ? "" : " and ") + std::string("--text ") + QuotedShort(*request.sampleText, 40);
    return given + (given.find(" and ") == given.npos ? " names" : " name") + " no character";
}

// A height as typed, and why it is refused: not a number, or not one the window takes.
std::string RefusedHeight(const std::string& typed)
{
    const std::string quoted = QuotedShort(typed, 40);
    if (TrimSpace(typed).empty() || !ReadNumber(TrimSpace(typed)))
        return quoted + " is not a number";
    return quoted + " is not from 6 to 256";
}

std::optional<std::string> PlanCharacters(const ExportRequest& request, ExportPlan& plan, ExportReport& report)
{
    CharCodeList codes;
    std::vector<std::string> unreadPieces;
    auto listMessage = ListCodes(request, codes, unreadPieces, report.context);
    if (!unreadPieces.empty()) {
        report.context = UnreadPieceLines(unreadPieces);
        return kInvalidCharsMessage;
    }
    if (listMessage)
        return listMessage;
    plan.characters = ListExportCharacters(codes, plan.options.codepage);
    const Codepage latin1 = Codepage::Latin1();
    const Codepage* codepage = request.UnicodeCodes() ? nullptr : request.codepage ? &*request.codepage : &latin1;
    if (auto message = AddGlyphSets(request.glyphSets, codepage, plan.characters, report.context))
        return message;
    if (plan.characters.empty()) {
        report.context.push_back(NoCharactersLine(request));
        return kNoCharactersMessage;
    }
    return std::nullopt;
}

ExportOptions OptionsOf(const ExportRequest& request)
{
    ExportOptions options;
    options.kerning = request.kerning;
    options.codepage = request.codepage ? &*request.codepage : nullptr;
    options.render = request.render;
    if (request.rotations)
        options.rotations = *request.rotations;
    options.format = request.format;
    options.packed = request.pack;
    options.packed.keys = request.UnicodeCodes() ? packed::Keys::Unicode : packed::Keys::Bytes;
    // Beyond the desktop's output, tables compile whatever the signedness of char.
    if (request.GoesBeyondDesktop())
        options.prevCharStyle = PrevCharStyle::CharLiteral;
    return options;
}

std::optional<std::string> PlanOutput(const ExportRequest& request, ExportPlan& plan, ExportReport& report)
{
    OutputLocation output = SplitOutputPath(request.outputPath, request.format);
    SanitizeBaseName(output.baseName);
    if (output.baseName == kConsumerHeaderName) {
        report.context.push_back(
            "the generated files include <ds_font.h>; give OUTPUT another name, e.g. out/MyFont.cpp");
        return kReservedNameMessage;
    }
    if (auto warning = ReservedIdentifierWarning(output.baseName))
        report.warnings.push_back(*warning);
    plan.baseName = output.baseName;
    plan.path = output.directory + output.baseName;
    if (request.proofPath && WhyNotAProofFile(*request.proofPath)) {
        report.context.push_back(*WhyNotAProofFile(*request.proofPath));
        return kProofWriteFailedMessage;
    }
    if (request.proofPath && (SameFile(*request.proofPath, plan.path + SourceExtension(request.format)) ||
                              SameFile(*request.proofPath, plan.path + ".h")))
        return kProofReplacesExportMessage;
    return std::nullopt;
}

// An extra font's own height, "@PX" after its path, read as --height is; the export's
// height without one.
std::optional<std::string> AddExtraFont(const ExtraFont& font, const std::string& option, ExportPlan& plan,
                                        ExportReport& report)
{
    unsigned height = plan.height;
    if (font.heightText) {
        if (auto message = ParseFontHeight(*font.heightText, height)) {
            report.context.push_back(option + " " + QuotedShort(font.path + "@" + *font.heightText, 80) +
                                     ": the height " + RefusedHeight(*font.heightText));
            return message;
        }
    }
    plan.fontPaths.push_back(font.path);
    plan.fontHeights.push_back(height);
    plan.fontFaces.push_back(font.face);
    return std::nullopt;
}

std::optional<std::string> PlanFonts(const ExportRequest& request, ExportPlan& plan, ExportReport& report)
{
    plan.fontPaths = {request.fontPath};
    plan.fontHeights = {plan.height};
    plan.fontFaces = {request.faceIndex};
    for (const GlyphSetArgument& set : request.glyphSets) {
        if (auto message = AddExtraFont(set.font, "--glyphs", plan, report))
            return message;
    }
    plan.firstFallback = plan.fontPaths.size();
    for (const ExtraFont& fallback : request.fallbacks) {
        if (auto message = AddExtraFont(fallback, "--fallback", plan, report))
            return message;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> PlanExport(const ExportRequest& request, ExportPlan& plan, ExportReport& report)
{
    if (auto message = ParseFontHeight(request.heightText, plan.height)) {
        report.context.push_back("--height " + RefusedHeight(request.heightText));
        return message;
    }
    plan.options = OptionsOf(request);
    if (auto message = PlanCharacters(request, plan, report))
        return message;
    if (request.proofPath) {
        plan.proofLines.emplace();
        if (auto message = ReadProofText(request.proofText, plan.characters, *plan.proofLines)) {
            if (request.proofText && InvalidUtf8Offset(*request.proofText) < request.proofText->size())
                report.context.push_back("--proof-text is not valid UTF-8 at byte " +
                                         std::to_string(InvalidUtf8Offset(*request.proofText) + 1));
            return message;
        }
    }
    if (auto message = PlanOutput(request, plan, report))
        return message;
    return PlanFonts(request, plan, report);
}
