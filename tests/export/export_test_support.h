#pragma once

#include "export/output_writer.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

inline constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline constexpr const char* kDejaVuSansMono = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf";

// What a writer function puts out, as one string.
std::string Captured(const std::function<void(OutputWriter&)>& write);

// An 8-bit grey bitmap over `pixels`, row by row with the given pitch.
FT_Bitmap GreyBitmap(unsigned width, unsigned rows, int pitch, std::vector<unsigned char>& pixels);

std::string ReadFile(const std::filesystem::path& path);

// A copy of the TrueType font `font` in `dir` whose glyph for `code` claims an impossible
// number of contours, so that FreeType opens the face but refuses to load that glyph.
// Returns the copy's path.
std::string FontWithBrokenGlyph(const std::string& font, const std::filesystem::path& dir, uint32_t code);

// A fresh directory under the system's temporary directory, removed with its content.
class TempDir
{
public:
    TempDir();
    ~TempDir();
    const std::filesystem::path& Path() const { return path; }
    // The directory as the exporter takes it: with a trailing "/".
    std::string Prefix() const { return path.string() + "/"; }

private:
    std::filesystem::path path;
};
