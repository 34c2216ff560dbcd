#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

inline constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

std::string ReadFile(const std::filesystem::path& path);

// Where the table `tag` of the TrueType font `data` starts; data.size() when it has none.
size_t FontTableOffset(const std::string& data, const char* tag);

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
