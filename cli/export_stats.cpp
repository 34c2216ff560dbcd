#include "cli/export_stats.h"

#include <algorithm>
#include <filesystem>

namespace {

// The label left-aligned, the value right-aligned in a column after it; the column moves
// right for a font's name that is longer than the labels.
void AddRow(std::string& table, const std::string& label, const std::string& value, size_t labelWidth)
{
    constexpr size_t kValueWidth = 12;
    table += label;
    table.append(label.size() < labelWidth ? labelWidth - label.size() : 1, ' ');
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
    ++glyphsOf.at(written.font);
    // Every turn of a glyph holds its width times its height.
    if (written.glyph.bitmap->buffer != nullptr)
        pixelBytesPerRotation += size_t{written.glyph.bitmap->width} * written.glyph.bitmap->rows;
    if (!written.kerning.empty()) {
        kerningPairs += written.kerning.size();
        ++kernedCharacters;
    }
}

void ExportStats::FontPacked(const PackedFont& font)
{
    packedBpp = font.bpp;
    flashParts = {{"font record", kPackedFontRecordBytes},
                  {"glyph records", font.records.size()},
                  {"pixels", font.pixels.size()},
                  {"pixel model", font.model.size()},
                  {"code lookup", font.blocks.size()},
                  {"kerning", font.kerning.size()}};
}

std::string ExportStats::Table(const std::string& sourceName, off_t sourceSize, const std::string& headerName,
                               off_t headerSize) const
{
    // With several fonts, a row for each, and the values' column right of their names.
    std::vector<std::string> fromLabels;
    size_t labelWidth = 27;
    for (size_t font = 0; fontPaths.size() > 1 && font < fontPaths.size(); ++font) {
        fromLabels.push_back("  from " + std::filesystem::path(fontPaths[font]).filename().string());
        labelWidth = std::max(labelWidth, fromLabels.back().size() + 1);
    }
    std::string table;
    AddRow(table, "characters", std::to_string(characters), labelWidth);
    for (size_t font = 0; font < fromLabels.size(); ++font)
        AddRow(table, fromLabels[font], std::to_string(glyphsOf[font]), labelWidth);
    std::string written; // in file order
    for (unsigned rotation : kRotations)
        if (HasRotation(rotations, rotation))
            written += (written.empty() ? "" : ",") + std::to_string(rotation);
    AddRow(table, "rotations", written, labelWidth);
    if (!flashParts.empty()) {
        AddRow(table, "bits a pixel", std::to_string(packedBpp), labelWidth);
        uint64_t flash = 0;
        for (const auto& [part, bytes] : flashParts) {
            AddRow(table, "flash bytes, " + part, std::to_string(bytes), labelWidth);
            flash += bytes;
        }
        AddRow(table, "flash bytes in all", std::to_string(flash), labelWidth);
        AddRow(table, "kerning pairs", std::to_string(kerningPairs), labelWidth);
    } else {
        AddRow(table, "pixel bytes per rotation", std::to_string(pixelBytesPerRotation), labelWidth);
        AddRow(table, "pixel bytes in all", std::to_string(rotations.size() * pixelBytesPerRotation), labelWidth);
        AddRow(table, "kerning pairs", std::to_string(kerningPairs), labelWidth);
        // Two tables per kerned character, a byte per pair and a closing 0 in each.
        AddRow(table, "kerning table bytes", std::to_string(2 * (kerningPairs + kernedCharacters)), labelWidth);
    }
    AddRow(table, sourceName + " bytes", SizeText(sourceSize), labelWidth);
    AddRow(table, headerName + " bytes", SizeText(headerSize), labelWidth);
    return table;
}
