#include "export_test_support.h"

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
