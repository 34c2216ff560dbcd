#include "test_support.h"

#include "raster/ft_font.h"

#include <cstdlib>
#include <fstream>
#include <numeric>
#include <sstream>
#include <stdexcept>

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

CharCodeList CodeRange(uint32_t first, uint32_t last)
{
    CharCodeList codes(last - first + 1);
    std::iota(codes.begin(), codes.end(), first);
    return codes;
}

size_t FontBytes::Table(const char* tag) const
{
    for (size_t record = 12; record < 12 + 16 * U16(4); record += 16)
        if (bytes.compare(record, 4, tag) == 0)
            return U32(record + 8);
    throw std::runtime_error(std::string("no table ") + tag);
}

std::string FontBytes::SaveAs(const std::filesystem::path& path) const
{
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
}

// FreeType checks a glyph's contour count when it loads the glyph, not when it opens the face.
std::string FontWithBrokenGlyph(const std::string& font, const std::filesystem::path& dir, uint32_t code)
{
    FontBytes data(font);
    FTFont face;
    face.LoadFace(font.c_str());
    const FT_UInt index = FT_Get_Char_Index(face.Face(), code);
    const size_t loca = data.Table("loca");
    const bool longOffsets = data.U16(data.Table("head") + 50) == 1;
    const size_t glyph =
        data.Table("glyf") + (longOffsets ? data.U32(loca + 4 * index) : 2 * data.U16(loca + 2 * index));
    data.Put16(glyph, 0x7FFF);
    return data.SaveAs(dir / "broken.ttf");
}

TempDir::TempDir()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "veltrane-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot create a temporary directory");
    path = pattern;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}
