#include "cli/output_name.h"

#include "cli/export_report.h"
#include "export/desktop/export_settings.h"

#include <filesystem>

namespace {

std::string EndingsText(FontFormat format)
{
    std::string text;
    for (const std::string& ending : SourceFileEndings(format))
        text += (text.empty() ? "" : " or ") + ending;
    return text;
}

} // namespace

// Empty, ending in "/" or an existing directory (through links).
static bool NamesDirectory(const std::string& path)
{
    std::error_code ignored;
    return path.empty() || path.ends_with('/') || std::filesystem::is_directory(path, ignored);
}

std::optional<std::string> WhyNotASourceFile(const std::string& path, FontFormat format)
{
    const std::vector<std::string> endings = SourceFileEndings(format);
    const std::string example = ", e.g. out/MyFont" + endings.front();
    if (NamesDirectory(path))
        return Quoted(path) + " names a directory; give the source file" + example;
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::optional<std::string> ending = SourceEndingOf(name, format);
    if (!ending)
        return Quoted(path) + " does not end in " + EndingsText(format) + "; give the source file" + example;
    if (name.size() == ending->size())
        return Quoted(path) + " has no name before " + *ending + "; give the source file" + example;
    return std::nullopt;
}

std::optional<std::string> WhyNotAProofFile(const std::string& path)
{
    if (NamesDirectory(path))
        return "--proof " + Quoted(path) + " is not a file name";
    return std::nullopt;
}

std::optional<std::string> ReservedIdentifierWarning(const std::string& baseName)
{
    // font_NAME_0 to font_NAME_270 are the pair's names the firmware sees; starting with
    // "font_", none can start with "_" and a capital letter.
    const std::string identifier = "font_" + baseName + "_0";
    if (identifier.find("__") == identifier.npos)
        return std::nullopt;
    return "the name gives the identifier " + identifier +
           ", which C++ reserves as it holds \"__\"; give OUTPUT a name of letters, digits and single \"_\"";
}
