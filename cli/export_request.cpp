#include "cli/export_request.h"

#include "cli/code_list.h"
#include "export/export_font.h"
#include "export/export_settings.h"
#include "proof/proof_file.h"
#include "raster/ft_exception.h"
#include "raster/ft_font.h"

std::optional<std::string> RunExport(const ExportRequest& request)
{
    unsigned height = 0;
    if (auto message = ParseFontHeight(request.heightText, height))
        return message;
    CharCodeList codes;
    if (auto message = ListCodes(request, codes))
        return message;
    OutputLocation output = SplitOutputPath(request.outputPath);
    ExportOptions options;
    options.kerning = request.kerning;
    options.codepage = request.codepage ? &*request.codepage : nullptr;
    ProofLines proofLines;
    WrittenFont written; // kept only for a proof
    if (request.proofPath) {
        if (auto message = ReadProofText(request.proofText, codes, options, proofLines))
            return message;
        options.listeners.push_back(&written);
    }
    try {
        FTFont font;
        font.LoadFace(request.fontPath.c_str(), request.faceIndex);
        if (!ExportFont(&font, output.baseName, output.directory, height, &codes, options))
            return kWriteFailedMessage;
    } catch (const FTException& e) {
        return e.what();
    }
    if (request.proofPath)
        return WriteProofImage(*request.proofPath, written, proofLines, height);
    return std::nullopt;
}
