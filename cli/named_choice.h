#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

// The value an option's text names among `choices`, letter case ignored (ASCII only, as a
// Turkish locale would lower "I" to a dotless one). Anything else is a usage error that
// lists the names: "--kerning: \"gsub\" is not legacy, gpos, auto or none".
template <typename Value>
Value NamedChoice(const std::string& option, const std::string& text,
                  const std::vector<std::pair<std::string, Value>>& choices)
{
    std::string lower = text;
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    std::string names;
    for (size_t i = 0; i < choices.size(); ++i) {
        if (lower == choices[i].first)
            return choices[i].second;
        names += (i == 0 ? "" : i + 1 == choices.size() ? " or " : ", ") + choices[i].first;
    }
    throw CLI::ValidationError(option, "\"" + text + "\" is not " + names);
}
