#include "cli/export_request.h"

#include "charset/char_range_parser.h"
#include "export/export_font.h"
#include "export/export_settings.h"
#include "export/exportable_codes.h"
#include "raster/ft_exception.h"
#include "raster/ft_font.h"

std::optional<std::string> RunExport(const ExportRequest& request)
{
    unsigned height = 0;
    if (auto message = ParseFontHeight(request.heightText, height))
        return message;
    CharCodeList codes = ParseCharCodeText(request.charsText);
    if (auto message = FindUnexportableCode(codes))
        return message;
    OutputLocation output = SplitOutputPath(request.outputPath);
    try {
        FTFont font;
        font.LoadFace(request.fontPath.c_str());
        if (!ExportFont(&font, output.baseName, output.directory, height, &codes))
            return kWriteFailedMessage;
    } catch (const FTException& e) {
        return e.what();
    }
    return std::nullopt;
}
