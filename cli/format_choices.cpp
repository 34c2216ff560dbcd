#include "cli/format_choices.h"

#include "cli/named_choice.h"

void AddFormatOptions(CLI::App& app, ExportRequest& request)
{
    app.add_option_function<std::string>(
           "--format",
           [&request](const std::string& text) {
               request.format =
                   NamedChoice<FontFormat>("--format", text, {{"ds", FontFormat::Ds}, {"packed", FontFormat::Packed}});
           },
           "ds (the desktop program's .cpp/.h pair: 8-bit pixels in four rotations for ds_font.h)\n"
           "or packed (a .c/.h pair for the C runtime veltrane_font.h: each glyph stored once in\n"
           "--bpp bits a pixel, compressed, drawn in any of the four rotations; keyed by Unicode\n"
           "code point and drawn from UTF-8 texts, or by byte with --codepage), any letter case,\n"
           "e.g. --format packed out/Small.c (default ds)")
        ->type_name("FORMAT");
    app.add_option_function<std::string>(
           "--bpp",
           [&request](const std::string& text) {
               request.pack.bpp = NamedChoice<unsigned>("--bpp", text, {{"1", 1}, {"2", 2}, {"4", 4}, {"8", 8}});
           },
           "With --format packed, the bits of a stored pixel: 1, 2, 4 or 8 (default 4; 1 with --mono)")
        ->type_name("N");
    app.add_option_function<std::string>(
           "--compress",
           [&request](const std::string& text) {
               request.pack.compress = NamedChoice<PixelCompression>("--compress", text,
                                                                     {{"auto", PixelCompression::Auto},
                                                                      {"runs", PixelCompression::Runs},
                                                                      {"none", PixelCompression::None}});
           },
           "With --format packed: auto (each glyph in the smallest coding, predicting each pixel\n"
           "from its neighbours where the font's model repays its tables), runs (the smallest of\n"
           "the run-length codings, which draw fastest) or none (every pixel stored plainly)\n"
           "(default auto)")
        ->type_name("MODE");
}

void CheckFormatChoices(const CLI::App& app, ExportRequest& request)
{
    if (request.format != FontFormat::Packed) {
        for (const char* option : {"--bpp", "--compress"})
            if (app.count(option) > 0)
                throw CLI::ValidationError(option, "only packed fonts take it; add --format packed");
        return;
    }
    if (request.rotations)
        throw CLI::ValidationError("--rotations", "a packed font stores each glyph once and the runtime draws it in "
                                                  "all four rotations; --rotations goes with --format ds");
    if (request.render.mono) {
        if (app.count("--bpp") > 0 && request.pack.bpp != 1)
            throw CLI::ValidationError("--bpp", "--mono renders 1 bit a pixel; give --bpp 1 or leave --bpp out");
        request.pack.bpp = 1;
    }
}
