#include "cli/command_line.h"

#include "cli/exit_status.h"
#include "app/app_version.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace {

constexpr const char* kDescription =
    "Writes the bitmap font source OUTPUT (.cpp) and its header (.h) beside it from a font file,\n"
    "as the desktop program's Export does.";

constexpr const char* kFooter =
    "OUTPUT's directory (the current one when it has none) receives both files; its name less\n"
    "one \".cpp\" (any case), with every character other than a letter, digit or \"_\" made \"_\",\n"
    "names them.\n"
    "\n"
    "Exit status: 0 when both files were written, 1 when the export failed (one message on\n"
    "standard error), 2 when the command line could not be read.";

// A save dialog always names a file; a path ending in "/" would write ".cpp" and ".h".
std::string CheckNamesFile(const std::string& path)
{
    if (path.empty() || path.back() == '/')
        return "\"" + path + "\" names a directory; give the source file, e.g. out/MyFont.cpp";
    return {};
}

} // namespace

std::optional<int> ParseCommandLine(int argc, char** argv, ExportRequest& request)
{
    CLI::App app{kDescription, "veltrane-fontgen-export"};
    app.footer(kFooter);
    app.set_version_flag("--version", kAppTitle);
    app.add_option("--height", request.heightText, "Pixel height, 6 to 256 (decimal, 0x hex or 0 octal)")
        ->capture_default_str();
    app.add_option("--chars", request.charsText,
                   "Character codes: comma-separated numbers and ranges such as 32-126, each up to 255")
        ->capture_default_str();
    app.add_option("FONT", request.fontPath, "The font file (its first face)")->required();
    app.add_option("OUTPUT", request.outputPath, "The source file to write, e.g. out/MyFont.cpp")
        ->required()
        ->check(CLI::Validator(CheckNamesFile, "FILE"));
    app.failure_message([](const CLI::App* self, const CLI::Error& e) {
        return std::string("veltrane-fontgen-export: ") + e.what() + "\n\n" + self->help();
    });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        // --help and --version arrive here too, with a status of 0 and the text for stdout.
        const int status = app.exit(e, std::cout, std::cerr);
        return status == 0 ? kExitSuccess : kExitUsage;
    }
    return std::nullopt;
}
