// veltrane-fontgen-export: the desktop program's export for build systems and CI,
// without a window. See --help.

#include "cli/command_line.h"
#include "cli/exit_status.h"
#include "cli/export_request.h"

#include <clocale>
#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    // Names are sanitized with the character classes of the user's locale, as on the desktop.
    std::setlocale(LC_CTYPE, "");

    ExportRequest request;
    if (std::optional<int> status = ParseCommandLine(argc, argv, request))
        return *status;
    try {
        if (std::optional<std::string> message = RunExport(request)) {
            std::fprintf(stderr, "%s\n", message->c_str());
            return kExitFailure;
        }
    } catch (const std::exception& e) { // out of memory, in practice
        std::fprintf(stderr, "%s\n", e.what());
        return kExitFailure;
    }
    return kExitSuccess;
}
