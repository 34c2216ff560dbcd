#include "cli/unknown_option.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace {

// How many letters must be inserted, deleted or replaced to turn `a` into `b`.
size_t EditDistance(const std::string& a, const std::string& b)
{
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

// The long option whose name `typed` most likely misspells or cuts short.
std::optional<std::string> NearestOption(const CLI::App& app, const std::string& typed)
{
    const size_t start = typed.find_first_not_of('-');
    const std::string bare = start == typed.npos ? "" : typed.substr(start);
    std::optional<std::string> nearest;
    size_t nearestDistance = 3; // more than two slips is another word
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            const size_t distance = name.starts_with(bare) && bare.size() >= 3 ? 0 : EditDistance(bare, name);
            if (distance < nearestDistance) {
                nearestDistance = distance;
                nearest = "--" + name;
            }
        }
    }
    return nearest;
}

bool LooksLikeOption(const std::string& arg)
{
    // "-" alone names standard input; "-16" and "-.5" are numbers.
    return arg.size() > 1 && arg[0] == '-' && !std::isdigit(static_cast<unsigned char>(arg[1])) && arg[1] != '.';
}

} // namespace

std::optional<std::string> UnknownOptionMessage(const CLI::App& app, const std::vector<std::string>& args)
{
    for (size_t i = 0; i < args.size() && args[i] != "--"; ++i) {
        if (!LooksLikeOption(args[i]))
            continue;
        const std::string name = args[i].substr(0, args[i].find('='));
        const CLI::Option* option = app.get_option_no_throw(name);
        if (!option) {
            const std::optional<std::string> nearest = NearestOption(app, name);
            return "unknown option " + name + (nearest ? "; did you mean " + *nearest + "?" : "");
        }
        if (option->get_type_size() != 0 && name == args[i])
            ++i; // its value
    }
    return std::nullopt;
}
