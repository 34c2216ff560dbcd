#include "preview_reference.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cmath>
#include <stdexcept>

namespace {

// One FreeType library and face for the lifetime of a calculation.
class Face
{
public:
    explicit Face(const std::string& path)
    {
        if (FT_Init_FreeType(&library) != 0 || FT_New_Face(library, path.c_str(), 0, &face) != 0 ||
            FT_Set_Pixel_Sizes(face, 0, 36) != 0)
            throw std::runtime_error("reference: cannot open " + path + " at 36 px");
    }
    ~Face() { FT_Done_FreeType(library); }
    FT_Face operator->() const { return face; }
    FT_Face get() const { return face; }

private:
    FT_Library library = nullptr;
    FT_Face face = nullptr;
};

// Source grey 255 - v at opacity 80/255 over the destination.
uint8_t Blend(uint8_t dst, uint8_t v)
{
    const double alpha = 80.0 / 255.0;
    return static_cast<uint8_t>(std::lround((255 - v) * alpha + dst * (1.0 - alpha)));
}

} // namespace

uint32_t LineHeightAt36(const std::string& fontPath)
{
    Face face(fontPath);
    return static_cast<uint32_t>(face->size->metrics.height >> 6);
}

GreyPicture ReferencePreview(const std::string& fontPath, const CharCodeList& codes,
                             uint32_t width, uint32_t height)
{
    Face face(fontPath);
    const int64_t cell = face->size->metrics.height >> 6;
    GreyPicture picture{width, height, std::vector<uint8_t>(size_t{width} * height, 255)};

    for (size_t i = 0; i < codes.size(); ++i) {
        int64_t penX, penY;
        if (width >= cell) {
            const int64_t perRow = width / cell;
            penX = int64_t(i) % perRow * cell;
            penY = (int64_t(i) / perRow + 1) * cell;
        } else {
            penX = int64_t(i) * cell;
            penY = 2 * cell;
        }
        if (FT_Load_Char(face.get(), codes[i], FT_LOAD_RENDER) != 0)
            continue;
        const FT_GlyphSlot slot = face->glyph;
        for (unsigned r = 0; r < slot->bitmap.rows; ++r) {
            for (unsigned c = 0; c < slot->bitmap.width; ++c) {
                const uint8_t v = slot->bitmap.buffer[r * slot->bitmap.pitch + c];
                const int64_t x = penX + slot->bitmap_left + c;
                const int64_t y = penY - slot->bitmap_top + r;
                if (v == 0 || x < 0 || y < 0 || x >= width || y >= height)
                    continue;
                uint8_t& pixel = picture.grey[size_t(y) * width + size_t(x)];
                pixel = Blend(pixel, v);
            }
        }
    }
    return picture;
}
