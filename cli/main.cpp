// veltrane-fontgen-export: the desktop program's export for build systems and CI,
// without a window. See --help.

#include "cli/command_line.h"
#include "cli/exit_status.h"
#include "cli/export_run.h"

#include <clocale>
#include <csignal>
#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    // Names are sanitized with the character classes of the user's locale, as on the desktop.
    std::setlocale(LC_CTYPE, "");
    // A reader that goes away makes the write fail, which the export reports and cleans
    // up after, rather than ending the program on the spot.
    std::signal(SIGPIPE, SIG_IGN);

    ExportRequest request;
    if (std::optional<int> status = ParseCommandLine(argc, argv, request))
        return *status;
    ExportReport report;
    std::optional<std::string> failure;
    try {
        failure = RunExport(request, report);
    } catch (const std::exception& e) { // out of memory, in practice
        failure = e.what();
    }
    PrintReport(stderr, failure, report);
    if (failure)
        return kExitFailure;
    std::fputs(report.stats.c_str(), stdout);
    return kExitSuccess;
}
