#include "cli/export_report.h"

void PrintReport(FILE* err, const std::optional<std::string>& failure, const ExportReport& report)
{
    if (failure)
        std::fprintf(err, "%s\n", failure->c_str());
    for (const auto* lines : {&report.context, &report.warnings}) {
        for (const std::string& line : *lines)
            std::fprintf(err, "%s%s\n", kReportPrefix, line.c_str());
    }
}

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += static_cast<char>(c);
        } else if (c < 0x20 || c == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X", c);
            quoted += escape;
        } else {
            quoted += static_cast<char>(c);
        }
    }
    return quoted + "\"";
}

std::string QuotedShort(std::string_view text, size_t maxBytes)
{
    if (text.size() <= maxBytes)
        return Quoted(std::string(text));
    size_t cut = maxBytes;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
        --cut;
    return Quoted(std::string(text.substr(0, cut))) + "...";
}
