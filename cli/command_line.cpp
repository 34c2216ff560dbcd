#include "cli/command_line.h"

#include "app/app_version.h"
#include "cli/exit_status.h"
#include "cli/export_report.h"
#include "cli/format_choices.h"
#include "cli/glyph_sets.h"
#include "cli/named_choice.h"
#include "cli/output_name.h"
#include "cli/render_choices.h"
#include "cli/rotation_list.h"
#include "cli/unknown_option.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <sstream>

namespace {

constexpr const char* kDescription =
    "Writes the bitmap font source OUTPUT (.cpp) and its header (.h) beside it from a font file,\n"
    "as the desktop program's Export does.";

// The manual page gives the examples from cli/veltrane-fontgen-export.h2m: keep both alike.
constexpr const char* kFooter =
    "OUTPUT's directory (the current one when it has none) receives both files; its name less\n"
    "one \".cpp\" (or \".c\" with --format packed), any case, with every character other than a\n"
    "letter, digit or \"_\" made \"_\", names them as the desktop program's save dialog does:\n"
    "out/Big.cpp.cpp gives out/Big_cpp.cpp and out/Big_cpp.h. OUTPUT must have that ending and\n"
    "not be a directory. Both are written under temporary names beside them and take their\n"
    "places only once both are whole: a failed or interrupted export leaves the earlier files as\n"
    "they were, and a file whose bytes would not change keeps its date. A link to a file is\n"
    "written through; a device or pipe is written in place.\n"
    "\n"
    "Exit status: 0 when both files (and a --proof image) were written (warnings, such as\n"
    "codes the font has no glyph for, on standard error), 1 when the export failed (its message\n"
    "on the first line of standard error, what it concerns on the lines after it), 2 when the\n"
    "command line could not be read.\n"
    "\n"
    "Examples:\n"
    "  veltrane-fontgen-export --height 12 --chars 32-126,0xB0 DejaVuSans.ttf out/Small.cpp\n"
    "  veltrane-fontgen-export --text 'Menu Settings 12:45' Roboto-Regular.ttf out/Ui.cpp\n"
    "  veltrane-fontgen-export --codepage CP1251 --chars 32-126 --text 'Привет, мир' \\\n"
    "      --kerning gpos NotoSans-Regular.ttf out/Russian.cpp\n"
    "  veltrane-fontgen-export --face 1 NotoSansCJK-Regular.ttc out/Cjk.cpp\n"
    "  veltrane-fontgen-export --mono --height 12 --hinting auto --rotations 0 DejaVuSans.ttf out/Oled.cpp\n"
    "  veltrane-fontgen-export --glyphs 'fontawesome-webfont.ttf:0xF240-0xF244=>0x80' DejaVuSans.ttf \\\n"
    "      out/Icons.cpp\n"
    "  veltrane-fontgen-export --fallback NotoSans-Regular.ttf --codepage CP1251 --text 'Привет' \\\n"
    "      --height 12 6x12-ISO8859-1.pcf.gz out/Pixel.cpp\n"
    "  veltrane-fontgen-export --format packed --bpp 4 DejaVuSans.ttf out/Small.c\n"
    "  veltrane-fontgen-export --format packed --face 2 --chars 32-126 --text-file strings.txt \\\n"
    "      NotoSansCJK-Regular.ttc out/Ui.c\n"
    "  veltrane-fontgen-export --height 16 --proof out/proof.png --proof-text $'AVATAR\\n12:45' \\\n"
    "      DejaVuSans.ttf out/Font.cpp";

// Any letter case, "GPOS" being how the table is usually written.
KerningMode ParseKerning(const std::string& text)
{
    return NamedChoice<KerningMode>("--kerning", text,
                                    {{"legacy", KerningMode::Legacy},
                                     {"gpos", KerningMode::Gpos},
                                     {"auto", KerningMode::Auto},
                                     {"none", KerningMode::None}});
}

// Help that names each option's value and leaves the rest to its description: no types,
// defaults, "REQUIRED" or "Needs:" beside the names.
class PlainHelp : public CLI::Formatter
{
public:
    PlainHelp() { label("Positionals", "Arguments"); }

    std::string make_option_opts(const CLI::Option* option) const override
    {
        return option->get_positional() || option->get_type_size() == 0 ? "" : " " + option->get_type_name();
    }
};

// A usage error as scripts and people read it: its message and where the options are told,
// every line prefixed.
void PrintUsageError(const std::string& message)
{
    std::istringstream lines(message + "\nRun 'veltrane-fontgen-export --help' for the options.");
    for (std::string line; std::getline(lines, line);)
        std::cerr << kReportPrefix << line << '\n';
}

// An option that takes one value, given more than once. (A flag given twice means it once.)
std::optional<std::string> RepeatedOption(const CLI::App& app)
{
    for (const CLI::Option* option : app.get_options()) {
        const bool oneValue = option->get_type_size() != 0 && option->get_expected_max() == 1;
        if (oneValue && !option->get_positional() && option->count() > 1)
            return option->get_name() + " is given twice";
    }
    return std::nullopt;
}

// What a usage error says: an unknown option, whatever the parser made of the arguments
// after it, else a repeated option, else the parser's message, an option without its value
// in plain words.
std::string UsageMessage(const CLI::App& app, int argc, char** argv, const CLI::ParseError& error)
{
    const std::vector<std::string> args(argv + std::min(argc, 1), argv + argc);
    if (auto unknown = UnknownOptionMessage(app, args))
        return *unknown;
    if (auto repeated = RepeatedOption(app))
        return *repeated;
    const std::string message = error.what();
    const size_t valueMissing = message.find(": 1 required ");
    const bool valueOnly = valueMissing != message.npos && message.ends_with(" missing");
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) && valueOnly)
        return message.substr(0, valueMissing) + " needs a value";
    return message;
}

// "-h 12" meant as the height would print the help and exit 0, a build passing without a
// font; the help goes alone.
std::optional<std::string> HelpAmongOthers(int argc, char** argv)
{
    for (int i = 1; argc > 2 && i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "-h")
            return "-h is the help; the height is --height";
        if (arg == "--help")
            return "--help is the help and goes alone";
    }
    return std::nullopt;
}

} // namespace

std::optional<int> ParseCommandLine(int argc, char** argv, ExportRequest& request)
{
    CLI::App app{kDescription, "veltrane-fontgen-export"};
    app.formatter(std::make_shared<PlainHelp>());
    app.footer(kFooter);
    app.set_version_flag("--version", kAppTitle);
    app.add_option("--height", request.heightText,
                   "Pixel height, 6 to 256 (decimal, 0x hex or 0 octal), e.g. 0x10 (default 16)")
        ->type_name("PX");
    app.add_option("--chars", request.charsText,
                   "Character codes: comma-separated numbers and ranges, e.g. 32-126,0xB0; each up to 255,\n"
                   "or a Unicode code point up to 0x10FFFF in a packed font without --codepage, e.g.\n"
                   "32-126,0x4E00-0x9FA5 (default 32-126, none when --text or --text-file is given alone)")
        ->type_name("LIST");
    app.add_option("--text", request.sampleText,
                   "A UTF-8 sample text, such as the firmware's UI strings: its characters join the list\n"
                   "after the --chars codes, as their bytes in the codepage (as themselves in a packed\n"
                   "font without --codepage); line breaks and tabs are skipped; letters typed as a base\n"
                   "and combining marks count as one, e.g. --text 'Menu Settings 12:45'")
        ->type_name("TEXT");
    app.add_option("--text-file", request.textFiles,
                   "A UTF-8 file, such as the firmware's strings or translations: every character joins\n"
                   "the list as --text takes it, a leading byte order mark skipped; may be given more\n"
                   "than once, e.g. --text-file strings/zh.txt")
        ->type_name("FILE")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option_function<std::string>(
           "--codepage",
           [&request](const std::string& name) {
               std::string error;
               request.codepage = Codepage::Open(name, error);
               if (!request.codepage)
                   throw CLI::ValidationError("--codepage", error);
           },
           "The codes are bytes of this 8-bit encoding (any iconv knows: ISO-8859-1 to -16,\n"
           "CP1250 to CP1258, KOI8-R, KOI8-U, CP437, CP866, ...), each exported with the glyph of\n"
           "the character it stands for, e.g. --codepage CP1251 (default: a code is its own\n"
           "Unicode character)")
        ->type_name("NAME");
    app.add_option_function<std::string>(
           "--kerning",
           [&request](const std::string& text) {
               request.kerning = ParseKerning(text);
               request.kerningGiven = true;
           },
           "Where the kerning pairs come from: legacy (the font's old 'kern' table, as the\n"
           "desktop program reads it), gpos (the OpenType 'kern' feature, each pair shaped with\n"
           "HarfBuzz; most modern fonts kern only this way), auto (gpos when the font has that\n"
           "feature, otherwise legacy) or none (no kerning tables), any letter case, e.g.\n"
           "--kerning gpos (default legacy)")
        ->type_name("SOURCE");
    app.add_option("--face", request.faceIndex,
                   "The face of a font collection (.ttc, .otc), 0 to 65535, e.g. --face 1 (default 0)")
        ->type_name("N")
        ->check(CLI::Range(0L, 65535L).description(""));
    app.add_option_function<std::string>(
           "--rotations",
           [&request](const std::string& text) {
               RotationList rotations;
               if (auto why = ReadRotationList(text, rotations))
                   throw CLI::ValidationError("--rotations", *why);
               request.rotations = std::move(rotations);
           },
           "The rotations whose pixel arrays, character records and font records are written:\n"
           "any of 0, 90, 180 and 270, comma-separated, each once, e.g. --rotations 0 for a display\n"
           "of one orientation (default all four; a proof shows them in the order given)")
        ->type_name("LIST");
    AddRenderOptions(app, request);
    AddFormatOptions(app, request);
    app.add_flag("--stats", request.stats,
                 "After the export, print a table of what was written on standard output: characters,\n"
                 "pixel bytes, kerning pairs and the sizes of the two files");
    CLI::Option* proof =
        app.add_option("--proof", request.proofPath,
                       "Also writes this 8-bit greyscale PNG: the proof text drawn from the exported data as\n"
                       "the firmware draws it, in rotations 0, 90, 180 and 270 (those of --rotations) side\n"
                       "by side, e.g. --proof out/proof.png")
            ->type_name("FILE.png");
    app.add_option("--proof-text", request.proofText,
                   "With --proof, the proof's UTF-8 text, a line feed starting a new line; every\n"
                   "character must be exported (default: the exported characters, 16 to a line)")
        ->type_name("TEXT")
        ->needs(proof);
    app.add_option_function<std::vector<std::string>>(
           "--glyphs",
           [&request](const std::vector<std::string>& sets) {
               for (const std::string& text : sets) {
                   std::optional<GlyphSetArgument> set = SplitGlyphSet(text);
                   if (!set)
                       throw CLI::ValidationError("--glyphs", Quoted(text) + " is not FONT:LIST or FONT:LIST=>CODE");
                   request.glyphSets.push_back(std::move(*set));
               }
           },
           "Also exports the characters LIST names (Unicode code points, as in --chars, e.g.\n"
           "0xF240-0xF244) with the glyphs of FONT, the path before the last \":\" (FONT#N: face N\n"
           "of a collection; FONT@PX: drawn PX pixels high); with =>CODE under consecutive codes\n"
           "from CODE on, else under their bytes in the codepage (their own code points in a\n"
           "packed font without --codepage). May be given more than once, e.g.\n"
           "--glyphs fontawesome-webfont.ttf:0xF240-0xF244=>0x80")
        ->type_name("FONT:LIST[=>CODE]")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option_function<std::vector<std::string>>(
           "--fallback",
           [&request](const std::vector<std::string>& fonts) {
               for (const std::string& font : fonts)
                   request.fallbacks.push_back(SplitFontHeight(font));
           },
           "A character the main font has no glyph for is taken from the first of these fonts\n"
           "that has one (FONT#N: face N of a collection; FONT@PX: drawn PX pixels high); may be\n"
           "given more than once, e.g. --fallback NotoSansCJK-Regular.ttc#2@16")
        ->type_name("FONT")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("FONT", request.fontPath, "The font file")->required();
    app.add_option("OUTPUT", request.outputPath,
                   "The source file to write, e.g. out/MyFont.cpp (out/MyFont.c with --format packed)")
        ->required();

    if (auto help = HelpAmongOthers(argc, argv)) {
        PrintUsageError(*help);
        return kExitUsage;
    }
    try {
        app.parse(argc, argv);
        CheckRenderChoices(app, request);
        CheckFormatChoices(app, request);
        // A save dialog always names a source file; a directory or another ending would
        // write files beside it, hidden ones or ones named unlike the source the build expects.
        if (auto why = WhyNotASourceFile(request.outputPath, request.format))
            throw CLI::ValidationError("OUTPUT", *why);
    } catch (const CLI::ParseError& e) {
        // --help and --version arrive here too, with a status of 0 and the text for stdout.
        if (e.get_exit_code() == 0) {
            app.exit(e, std::cout, std::cerr);
            return kExitSuccess;
        }
        PrintUsageError(UsageMessage(app, argc, argv, e));
        return kExitUsage;
    }
    return std::nullopt;
}
