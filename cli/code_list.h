#pragma once

#include "charset/char_code_list.h"
#include "cli/export_request.h"

#include <optional>
#include <string>
#include <vector>

// The codes the command line names: those of --chars, then the characters of the sample
// text and of the text files in turn, in the order of their first appearance: their code
// points in a Unicode font, else their bytes in the codepage (Latin-1 without one); line
// breaks, tabs and a file's leading byte order mark are skipped. A text is read composed to
// Unicode NFC, or as typed when only that fits the codepage. Returns the message of the
// first text, character or code that cannot be exported, checked in that order: a text
// that is not UTF-8 or a file that cannot be read, a text character the codepage cannot
// hold, a code the export's code space lacks (FindUnexportableCode), a code the codepage
// leaves undefined. The pieces of --chars that cannot be read are left out and added, trimmed,
// to `unreadPieces`. A text Latin-1 cannot hold, with no codepage given, adds to `context`
// the common codepages that hold it.
std::optional<std::string> ListCodes(const ExportRequest& request, CharCodeList& codes,
                                     std::vector<std::string>& unreadPieces, std::vector<std::string>& context);
