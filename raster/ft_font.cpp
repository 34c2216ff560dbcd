#include "raster/ft_font.h"

#include "raster/bitmap_convert.h"

#include FT_BDF_H

#include <algorithm>

namespace {

// FreeType's 26.6 values become whole pixels by an arithmetic shift (floor).
int32_t WholePixels(FT_Pos value)
{
    return static_cast<int32_t>(value >> 6);
}

// Real faces keep every glyph within about two ems. A glyph measuring more than this
// many ems across comes from a broken face (scrambled outlines, a wrong units-per-em), and
// drawing or exporting its pixels could take minutes and gigabytes, so it is refused.
constexpr FT_Pos kMaxGlyphEms = 8;

bool IsOutOfProportion(FT_GlyphSlot slot, const FT_Size_Metrics& size)
{
    const FT_Pos em = std::max<FT_Pos>({size.x_ppem, size.y_ppem, 1});
    const FT_Pos limit = kMaxGlyphEms * em * 64; // 26.6
    return slot->metrics.width > limit || slot->metrics.height > limit;
}

// The wrapper's char codes name FreeType characters by sign extension: 0x80..0xFF become
// codes with every higher bit set, which name no character.
FT_ULong SignExtended(char c)
{
    return static_cast<FT_ULong>(static_cast<long>(static_cast<signed char>(c)));
}

FT_Int32 LoadFlags(const RenderOptions& options)
{
    // FT_LOAD_TARGET_NORMAL is 0: FT_LOAD_DEFAULT's target.
    const FT_Int32 target = options.mono ? FT_LOAD_TARGET_MONO : FT_LOAD_TARGET_NORMAL;
    switch (options.hinting) {
    case Hinting::Light: // a target of its own, which mono takes the place of
        return options.mono ? target : FT_LOAD_TARGET_LIGHT;
    case Hinting::Auto:
        return FT_LOAD_FORCE_AUTOHINT | target;
    case Hinting::None:
        return FT_LOAD_NO_HINTING | target;
    case Hinting::Native:
        break;
    }
    return FT_LOAD_DEFAULT | target;
}

// A strike's grey or colour pixels as 1-bit ones, for a display that has no others:
// set from half coverage up.
void ToMono(std::vector<uint8_t>& pixels)
{
    for (uint8_t& pixel : pixels)
        pixel = pixel >= 0x80 ? 0xFF : 0x00;
}

} // namespace

FTFont::FTFont()
{
    if (FT_Init_FreeType(&library) != 0)
        throw FTException("cannot initialize library");
}

FTFont::~FTFont()
{
    UnloadFace();
    FT_Done_FreeType(library);
}

void FTFont::LoadFace(const char* path, long faceIndex)
{
    FT_Face opened = nullptr;
    // A negative index would only ask FreeType how many faces the file has.
    if (faceIndex < 0 || FT_New_Face(library, path, faceIndex, &opened) != 0)
        throw FTException("cannot load font file");
    UnloadFace();
    face = opened;
    ++faceSerial;
}

void FTFont::UnloadFace()
{
    if (face != nullptr) {
        FT_Done_Face(face);
        face = nullptr;
        ++faceSerial;
    }
    ownEncoding.reset();
}

void FTFont::SetPixelSize(uint32_t height)
{
    if (FT_Set_Pixel_Sizes(face, 0, height) != 0)
        throw FTException("cannot set char size");
}

int64_t FTFont::GetLineHeight() const
{
    if (face == nullptr)
        return 0;
    return face->size->metrics.height >> 6;
}

void FTFont::RenderGlyph(uint32_t code, FTGlyph& out, const RenderOptions& options)
{
    FT_UInt index = GlyphIndex(code);
    if (FT_Load_Glyph(face, index, LoadFlags(options)) != 0)
        throw FTException("cannot load glyph");
    FT_GlyphSlot slot = face->glyph;
    // A bitmap strike is loaded as drawn, and FreeType's render leaves it so.
    const bool strike = slot->format == FT_GLYPH_FORMAT_BITMAP;
    const FT_Render_Mode mode = options.mono ? FT_RENDER_MODE_MONO : FT_RENDER_MODE_NORMAL;
    if (IsOutOfProportion(slot, face->size->metrics) || FT_Render_Glyph(slot, mode) != 0)
        throw FTException("cannot render glyph");

    const bool greyStrikeToMono = options.mono && strike && slot->bitmap.pixel_mode != FT_PIXEL_MODE_MONO;
    FT_Bitmap* coverage = &slot->bitmap;
    if (!IsGrayCoverage(slot->bitmap) || greyStrikeToMono) {
        convertedBitmap = ConvertToGrayCoverage(slot->bitmap, convertedPixels);
        if (greyStrikeToMono)
            ToMono(convertedPixels);
        coverage = &convertedBitmap;
    }
    if (!strike && !options.mono && options.gamma != 1.0 && coverage->buffer != nullptr)
        ApplyGamma(options.gamma, *coverage);
    out.bitmap = coverage;
    out.left = slot->bitmap_left;
    out.top = slot->bitmap_top;
    out.advanceX = WholePixels(slot->advance.x);
    out.advanceY = WholePixels(slot->advance.y);
}

void FTFont::ApplyGamma(double gamma, FT_Bitmap& grey)
{
    if (gammaOfTable != gamma) {
        gammaTable = GammaTable(gamma);
        gammaOfTable = gamma;
    }
    // Either buffer holds this render alone: the slot's or the converted one.
    for (unsigned r = 0; r < grey.rows; ++r) {
        uint8_t* row = grey.buffer + static_cast<size_t>(r) * static_cast<unsigned>(grey.pitch);
        for (unsigned c = 0; c < grey.width; ++c)
            row[c] = gammaTable[row[c]];
    }
}

void FTFont::GetKerning(char left, char right, FT_Vector& out) const
{
    GetCharKerning(SignExtended(left), SignExtended(right), out);
}

void FTFont::GetCharKerning(FT_ULong left, FT_ULong right, FT_Vector& out) const
{
    out.x = 0;
    out.y = 0;
    FT_UInt leftIndex = GlyphIndex(left);
    FT_UInt rightIndex = GlyphIndex(right);
    FT_Get_Kerning(face, leftIndex, rightIndex, FT_KERNING_DEFAULT, &out);
    out.x >>= 6;
    out.y >>= 6;
}

FT_UInt FTFont::GlyphIndex(FT_ULong character) const
{
    if (!ownEncoding)
        return FT_Get_Char_Index(face, character);
    if (character > 0x10FFFF) // not a character at all, as sign-extended codes are
        return 0;
    const std::optional<uint8_t> byte = ownEncoding->ByteOf(static_cast<char32_t>(character));
    return byte ? FT_Get_Char_Index(face, *byte) : 0;
}

std::optional<std::string> FTFont::LookUpInOwnEncoding()
{
    const char* encoding = nullptr;
    const char* registry = nullptr;
    // FreeType selects a Unicode charmap by itself when the face has one.
    if (face == nullptr || face->charmap != nullptr || face->num_charmaps != 1 ||
        FT_Get_BDF_Charset_ID(face, &encoding, &registry) != 0 || registry == nullptr || encoding == nullptr)
        return std::nullopt;
    const std::string name = std::string(registry) + "-" + encoding; // X11's KOI8-R, ISO8859-7
    std::string unknown;
    std::optional<Codepage> opened = Codepage::Open(name, unknown);
    if (!opened || FT_Set_Charmap(face, face->charmaps[0]) != 0)
        return name;
    ownEncoding = std::move(opened);
    return std::nullopt;
}
