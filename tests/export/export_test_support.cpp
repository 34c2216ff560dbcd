#include "export_test_support.h"

#include "raster/ft_font.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

TempDir::TempDir()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "veltrane-export-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot create a temporary directory");
    path = pattern;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

namespace {

size_t U16(const std::string& data, size_t at) { return uint8_t(data.at(at)) << 8 | uint8_t(data.at(at + 1)); }
size_t U32(const std::string& data, size_t at) { return U16(data, at) << 16 | U16(data, at + 2); }

} // namespace

size_t FontTableOffset(const std::string& data, const char* tag)
{
    for (size_t entry = 12; entry < 12 + 16 * U16(data, 4); entry += 16) {
        if (data.compare(entry, 4, tag) == 0)
            return U32(data, entry + 8);
    }
    return data.size();
}

// FreeType checks a glyph's contour count when it loads the glyph, not when it opens
// the face: setting it to 0x7FFF breaks exactly this one glyph.
std::string FontWithBrokenGlyph(const std::string& font, const std::filesystem::path& dir, uint32_t code)
{
    std::string data = ReadFile(font);
    const size_t loca = FontTableOffset(data, "loca");
    FTFont face;
    face.LoadFace(font.c_str());
    const FT_UInt index = FT_Get_Char_Index(face.Face(), code);
    const bool longOffsets = U16(data, FontTableOffset(data, "head") + 50) == 1;
    const size_t glyph = FontTableOffset(data, "glyf") +
                         (longOffsets ? U32(data, loca + 4 * index) : 2 * U16(data, loca + 2 * index));
    data[glyph] = 0x7F;
    data[glyph + 1] = static_cast<char>(0xFF);
    const std::filesystem::path path = dir / "broken.ttf";
    std::ofstream(path, std::ios::binary) << data;
    return path.string();
}
