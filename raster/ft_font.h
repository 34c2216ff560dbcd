#pragma once

#include "charset/codepage.h"
#include "raster/ft_exception.h"
#include "raster/render_options.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What rendering one character yields. `bitmap` points at 8-bit coverage, one byte
// per pixel with a positive pitch, valid until the next render on the same FTFont.
struct FTGlyph
{
    const FT_Bitmap* bitmap = nullptr;
    int32_t left = 0;     // pen position to the bitmap's left column, positive right
    int32_t top = 0;      // baseline to the bitmap's top row, positive up
    int32_t advanceX = 0; // whole pixels
    int32_t advanceY = 0; // whole pixels
};

// The tool's only access to FreeType: one library handle and at most one face.
// Every failure that matters throws FTException with a fixed message.
class FTFont
{
public:
    FTFont();
    ~FTFont();
    FTFont(const FTFont&) = delete;
    FTFont& operator=(const FTFont&) = delete;

    // Opens face `faceIndex` of the file (of a collection; plain fonts have only face 0).
    // On failure the earlier face stays current.
    void LoadFace(const char* path, long faceIndex = 0);
    void UnloadFace();
    bool HasFace() const { return face != nullptr; }
    FT_Face Face() const { return face; }
    // Changes whenever the current face does, so that what was worked out from one face
    // is never taken for a later one that FreeType happens to place at the same address.
    uint64_t FaceSerial() const { return faceSerial; }

    void SetPixelSize(uint32_t height);
    // Distance between two baselines at the size set last; 0 without a face.
    int64_t GetLineHeight() const;
    // Renders the character at the size set last. Throws "cannot load glyph" or "cannot
    // render glyph"; the latter also for a glyph more than eight ems across, which only a
    // broken face has. `out` is left alone when it throws. `options` choose the hinting
    // and rasteriser of outlines; the defaults render as FreeType does by default.
    void RenderGlyph(uint32_t code, FTGlyph& out, const RenderOptions& options = {});
    // Kerning of `left` followed by `right` in whole pixels. Both are widened with
    // sign extension, so only 7-bit characters name real glyphs.
    void GetKerning(char left, char right, FT_Vector& out) const;
    // The same for two Unicode characters, looked up as they are.
    void GetCharKerning(FT_ULong left, FT_ULong right, FT_Vector& out) const;

    // The glyph index of the character: 0 when the face has no glyph for it.
    FT_UInt GlyphIndex(FT_ULong character) const;
    // Opt-in for a face without a Unicode charmap that names an 8-bit encoding of its own,
    // as X11 bitmap fonts in KOI8-R or ISO8859-7 do, whose glyphs FreeType otherwise finds
    // by no character: until the next face, a character is looked up by its byte in that
    // encoding, through the face's own charmap. Any other face stays as it is. Returns the
    // name of an encoding that iconv does not know as 8-bit, whose face stays as it is too.
    std::optional<std::string> LookUpInOwnEncoding();
    // The encoding LookUpInOwnEncoding took up; null while characters are looked up as Unicode.
    const Codepage* OwnEncoding() const { return ownEncoding ? &*ownEncoding : nullptr; }

private:
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    uint64_t faceSerial = 0;
    std::optional<Codepage> ownEncoding;
    // Glyphs FreeType delivers in another pixel format are converted into here.
    std::vector<uint8_t> convertedPixels;
    FT_Bitmap convertedBitmap{};
    // Applies `gamma` to the coverage of a render, `grey` having a positive pitch.
    void ApplyGamma(double gamma, FT_Bitmap& grey);
    // The table of the gamma asked for last (0: none built yet).
    std::array<uint8_t, 256> gammaTable{};
    double gammaOfTable = 0;
};
