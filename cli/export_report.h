#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Starts every line the exporter writes on standard error besides a failure's message, so
// that a build log tells where it comes from.
inline constexpr const char* kReportPrefix = "veltrane-fontgen-export: ";

// What an export has to say besides whether it failed. Lines are kept without the prefix.
struct ExportReport
{
    std::vector<std::string> context;  // what a failure concerns, shown after its message
    std::vector<std::string> warnings; // what the export went on despite
    std::string stats;                 // for standard output after a success (--stats)
};

// Writes to `err` the failure's message when there is one, alone on the first line as
// scripts expect it, then the context lines and the warnings.
void PrintReport(FILE* err, const std::optional<std::string>& failure, const ExportReport& report);

// `text` in double quotes, with quotes, backslashes and control bytes escaped so that it
// stays on its line.
std::string Quoted(const std::string& text);

// The same for a text a user may have pasted a megabyte of: cut after at most `maxBytes`
// (at a UTF-8 character's start) and marked "..." so that it stays one readable line.
std::string QuotedShort(std::string_view text, size_t maxBytes);
