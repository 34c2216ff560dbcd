#include "export_test_support.h"

#include "raster/ft_font.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

std::string Captured(const std::function<void(OutputWriter&)>& write)
{
    char* data = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&data, &size);
    {
        OutputWriter out(stream);
        write(out);
        out.Close();
    }
    std::fclose(stream);
    std::string text(data, size);
    std::free(data);
    return text;
}

FT_Bitmap GreyBitmap(unsigned width, unsigned rows, int pitch, std::vector<unsigned char>& pixels)
{
    FT_Bitmap bitmap{};
    bitmap.width = width;
    bitmap.rows = rows;
    bitmap.pitch = pitch;
    bitmap.buffer = pixels.data();
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    bitmap.num_grays = 256;
    return bitmap;
}

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

// FreeType checks a glyph's contour count when it loads the glyph, not when it opens
// the face: setting it to 0x7FFF breaks exactly this one glyph.
std::string FontWithBrokenGlyph(const std::string& font, const std::filesystem::path& dir, uint32_t code)
{
    std::string data = ReadFile(font);
    auto u16 = [&](size_t at) { return (uint8_t(data[at]) << 8) | uint8_t(data[at + 1]); };
    auto u32 = [&](size_t at) { return (uint32_t(u16(at)) << 16) | u16(at + 2); };
    size_t head = 0, loca = 0, glyf = 0;
    for (size_t i = 0, n = u16(4); i < n; ++i) {
        const std::string tag = data.substr(12 + 16 * i, 4);
        const size_t offset = u32(12 + 16 * i + 8);
        if (tag == "head")
            head = offset;
        else if (tag == "loca")
            loca = offset;
        else if (tag == "glyf")
            glyf = offset;
    }
    FTFont face;
    face.LoadFace(font.c_str());
    const FT_UInt index = FT_Get_Char_Index(face.Face(), code);
    const bool longOffsets = u16(head + 50) == 1;
    const size_t glyph = glyf + (longOffsets ? u32(loca + 4 * index) : 2 * u16(loca + 2 * index));
    data[glyph] = 0x7F;
    data[glyph + 1] = static_cast<char>(0xFF);
    const std::filesystem::path path = dir / "broken.ttf";
    std::ofstream(path, std::ios::binary) << data;
    return path.string();
}
