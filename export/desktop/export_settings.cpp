#include "export/desktop/export_settings.h"

#include "charset/number_text.h"

#include <cstdint>
#include <string_view>

namespace {

constexpr std::string_view kSourceSuffix = ".cpp";

// Letter case is ignored for ASCII only, whatever the locale: the suffix is plain ASCII.
bool EndsWithSourceSuffix(const std::string& name)
{
    if (name.size() < kSourceSuffix.size())
        return false;
    const std::size_t start = name.size() - kSourceSuffix.size();
    for (std::size_t i = 0; i < kSourceSuffix.size(); ++i) {
        char c = name[start + i];
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        if (c != kSourceSuffix[i])
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

std::string BaseNameFromFileName(const std::string& fileName)
{
    if (EndsWithSourceSuffix(fileName))
        return fileName.substr(0, fileName.size() - kSourceSuffix.size());
    return fileName;
}

OutputLocation SplitOutputPath(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {"./", BaseNameFromFileName(path)};
    return {path.substr(0, slash + 1), BaseNameFromFileName(path.substr(slash + 1))};
}
