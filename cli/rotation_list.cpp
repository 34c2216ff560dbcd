#include "cli/rotation_list.h"

#include "charset/number_text.h"
#include "cli/export_report.h"

#include <algorithm>

std::optional<std::string> ReadRotationList(const std::string& text, RotationList& rotations)
{
    RotationList read;
    for (size_t start = 0;;) {
        const size_t comma = text.find(',', start);
        const std::string_view item = TrimSpace(std::string_view(text).substr(start, comma - start));
        const auto known = std::find_if(kRotations.begin(), kRotations.end(),
                                        [item](unsigned rotation) { return item == std::to_string(rotation); });
        if (known == kRotations.end())
            return QuotedShort(item, 16) + " is not 0, 90, 180 or 270";
        if (HasRotation(read, *known))
            return std::to_string(*known) + " is given twice";
        read.push_back(*known);
        if (comma == text.npos)
            break;
        start = comma + 1;
    }
    rotations = std::move(read);
    return std::nullopt;
}
