// Fuzz target for the exporter's command line: the input is an argument list, one argument
// a line, read, checked and planned as the program does, and with the test fonts opened and
// their glyphs chosen, up to where the files would be written. "$F" in an argument stands
// for the test font, "$I" for its icons font, so that inputs reach --glyphs, --fallback and
// FONT@PX with fonts that load; an argument list naming any other font stops after the plan,
// as a path such as /dev/stdin could wait for ever. Besides the sanitizers' checks it fails
// when the command line is accepted but the plan neither fails with a message nor lists a
// character, or a failure leaves its message empty.
#include "cli/command_line.h"
#include "cli/export_fonts.h"
#include "cli/export_plan.h"
#include "raster/ft_exception.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
const std::string kIconsFont = VELTRANE_TEST_FONT_DIR "/veltrane-test-icons.ttf";

void Check(bool ok, const char* fault)
{
    if (!ok) {
        std::fprintf(stderr, "export_arguments_fuzz: %s\n", fault);
        std::abort();
    }
}

std::string WithFonts(std::string arg)
{
    for (const auto& [token, path] : {std::pair{"$F", &kTestFont}, {"$I", &kIconsFont}})
        for (size_t at; (at = arg.find(token)) != arg.npos;)
            arg.replace(at, 2, *path);
    return arg;
}

std::vector<std::string> SplitLines(const uint8_t* data, size_t size)
{
    std::vector<std::string> args = {"veltrane-fontgen-export"};
    std::string arg;
    for (size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            args.push_back(WithFonts(arg));
            arg.clear();
        } else {
            arg += static_cast<char>(data[i]);
        }
    }
    args.push_back(WithFonts(arg));
    return args;
}

bool OnlyTestFonts(const ExportPlan& plan)
{
    for (const std::string& path : plan.fontPaths)
        if (path != kTestFont && path != kIconsFont)
            return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::vector<std::string> args = SplitLines(data, size);
    std::vector<char*> argv;
    for (std::string& arg : args)
        argv.push_back(arg.data());
    argv.push_back(nullptr);
    ExportRequest request;
    if (ParseCommandLine(static_cast<int>(args.size()), argv.data(), request))
        return 0; // help, version or a usage error
    ExportPlan plan;
    ExportReport report;
    if (auto message = PlanExport(request, plan, report)) {
        Check(!message->empty(), "a failed plan has no message");
        return 0;
    }
    Check(!plan.characters.empty(), "a plan without characters passed");
    if (!OnlyTestFonts(plan))
        return 0;
    try {
        ExportFonts fonts;
        OpenFonts(plan, fonts, report);
        if (auto message = ChooseGlyphs(request, plan, fonts, report))
            Check(!message->empty(), "a failed choice of glyphs has no message");
    } catch (const FTException& e) {
        Check(*e.what() != 0, "a FreeType failure has no message");
    }
    return 0;
}
