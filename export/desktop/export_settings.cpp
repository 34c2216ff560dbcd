#include "export/desktop/export_settings.h"

#include "charset/number_text.h"

#include <cstdint>
#include <string_view>

namespace {

// Letter case is ignored for ASCII only, whatever the locale: the endings are plain ASCII.
bool EndsWithAnyCase(const std::string& name, std::string_view ending)
{
    if (name.size() < ending.size())
        return false;
    const std::size_t start = name.size() - ending.size();
    for (std::size_t i = 0; i < ending.size(); ++i) {
        char c = name[start + i];
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        if (c != ending[i])
            return false;
    }
    return true;
}

} // namespace

std::optional<std::string> ParseFontHeight(const std::string& text, unsigned& height)
{
    const std::optional<uint64_t> value = ReadNumber(TrimSpace(text));
    if (!value)
        return kInvalidFontSizeMessage;
    const uint32_t candidate = static_cast<uint32_t>(*value);
    if (static_cast<uint32_t>(candidate - 6) > 250)
        return kFontSizeRangeMessage;
    height = candidate;
    return std::nullopt;
}

std::vector<std::string> SourceFileEndings(FontFormat format)
{
    if (format == FontFormat::Packed)
        return {".c", ".cpp"};
    return {".cpp"};
}

std::optional<std::string> SourceEndingOf(const std::string& fileName, FontFormat format)
{
    for (const std::string& ending : SourceFileEndings(format))
        if (EndsWithAnyCase(fileName, ending))
            return ending;
    return std::nullopt;
}

std::string BaseNameFromFileName(const std::string& fileName, FontFormat format)
{
    const std::optional<std::string> ending = SourceEndingOf(fileName, format);
    return fileName.substr(0, fileName.size() - (ending ? ending->size() : 0));
}

OutputLocation SplitOutputPath(const std::string& path, FontFormat format)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {"./", BaseNameFromFileName(path, format)};
    return {path.substr(0, slash + 1), BaseNameFromFileName(path.substr(slash + 1), format)};
}
