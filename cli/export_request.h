#pragma once

#include <optional>
#include <string>

// One export as the command line asks for it, every value still as typed.
struct ExportRequest {
    std::string fontPath;
    std::string outputPath; // the source file's path, as chosen in the desktop's save dialog
    std::string heightText = "16";
    std::string charsText = "32-126";
};

// Runs the export with the desktop program's rules and messages. Checks in this order,
// each before anything slower: the height text, the character codes (all must fit in
// 8 bits), opening the font, writing. Returns the message of the first failure, or
// nothing when both files were written.
std::optional<std::string> RunExport(const ExportRequest& request);
