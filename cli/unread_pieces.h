#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Why the characters parser could not read `piece` of the list `option` gave (trimmed, as
// the parser reports it): "\"OxFF\" in --chars is not a number", "\"126-32\" in --chars
// runs backwards".
std::string WhyPieceUnread(const std::string& piece, const std::string& option = "--chars");

// The lines that tell why each piece cannot be read, at most kMaxPieceLines of them and
// then one that counts the rest: a megabyte of --chars must not flood the log.
inline constexpr size_t kMaxPieceLines = 10;
std::vector<std::string> UnreadPieceLines(const std::vector<std::string>& pieces,
                                          const std::string& option = "--chars");
