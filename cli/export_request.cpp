#include "cli/export_request.h"

#include "cli/code_list.h"
#include "export/export_font.h"
#include "export/export_settings.h"
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
    try {
        FTFont font;
        font.LoadFace(request.fontPath.c_str(), request.faceIndex);
        if (!ExportFont(&font, output.baseName, output.directory, height, &codes, options))
            return kWriteFailedMessage;
    } catch (const FTException& e) {
        return e.what();
    }
    return std::nullopt;
}
