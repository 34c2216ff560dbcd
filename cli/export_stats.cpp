#include "cli/export_stats.h"

namespace {

// The label left-aligned, the value right-aligned in a column after it.
void AddRow(std::string& table, const std::string& label, const std::string& value)
{
    constexpr size_t kLabelWidth = 27, kValueWidth = 12;
    table += label;
    table.append(label.size() < kLabelWidth ? kLabelWidth - label.size() : 1, ' ');
    table.append(value.size() < kValueWidth ? kValueWidth - value.size() : 0, ' ');
    table += value + "\n";
}

std::string SizeText(off_t size)
{
    return size < 0 ? "unknown" : std::to_string(size);
}

} // namespace

void ExportStats::CharacterWritten(const WrittenCharacter& written)
{
    ++characters;
    // Every turn of a glyph holds its width times its height.
    if (written.glyph.bitmap->buffer != nullptr)
        pixelBytesPerRotation += size_t{written.glyph.bitmap->width} * written.glyph.bitmap->rows;
    if (!written.kerning.empty()) {
        kerningPairs += written.kerning.size();
        ++kernedCharacters;
    }
}

std::string ExportStats::Table(const std::string& sourceName, off_t sourceSize, const std::string& headerName,
                               off_t headerSize) const
{
    std::string table;
    AddRow(table, "characters", std::to_string(characters));
    if (rotations.size() != kRotations.size()) {
        std::string written; // in file order
        for (unsigned rotation : kRotations)
            if (HasRotation(rotations, rotation))
                written += (written.empty() ? "" : ",") + std::to_string(rotation);
        AddRow(table, "rotations", written);
    }
    AddRow(table, "pixel bytes per rotation", std::to_string(pixelBytesPerRotation));
    AddRow(table, "pixel bytes in all", std::to_string(rotations.size() * pixelBytesPerRotation));
    AddRow(table, "kerning pairs", std::to_string(kerningPairs));
    // Two tables per kerned character, a byte per pair and a closing 0 in each.
    AddRow(table, "kerning table bytes", std::to_string(2 * (kerningPairs + kernedCharacters)));
    AddRow(table, sourceName + " bytes", SizeText(sourceSize));
    AddRow(table, headerName + " bytes", SizeText(headerSize));
    return table;
}
