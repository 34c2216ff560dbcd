#pragma once
// Fonts, files and directories for the tests of every folder.

#include "charset/char_code_list.h"

#include <cstdint>
#include <filesystem>
#include <string>

inline const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
inline const std::string kLegacyKernTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test-legacy-kern.ttf";
// Icons at U+E000 and U+E001 that kern together, a "B" the test font lacks, an "A" unlike its.
inline const std::string kIconsFont = VELTRANE_TEST_FONT_DIR "/veltrane-test-icons.ttf";
inline const std::string kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline const std::string kNotoSans = "/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf";
inline const std::string kRoboto = "/usr/share/fonts/truetype/roboto/unhinted/RobotoTTF/Roboto-Regular.ttf";
inline const std::string kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb"; // bitmap strikes only
inline const std::string kKoi8rFont = "/usr/share/fonts/X11/misc/5x8-KOI8-R.pcf.gz";           // encoded in KOI8-R
inline const std::string kNotoSansCjk =
    "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc"; // faces: 0 JP, 1 KR, 2 SC, 3 TC

// The codes first to last, ascending.
CharCodeList CodeRange(uint32_t first, uint32_t last);

std::string ReadFile(const std::filesystem::path& path);

// The bytes of a TrueType font, to be patched and saved.
struct FontBytes
{
    explicit FontBytes(const std::string& path) : bytes(ReadFile(path)) {}
    uint32_t U16(size_t at) const { return uint32_t(uint8_t(bytes.at(at))) << 8 | uint8_t(bytes.at(at + 1)); }
    uint32_t U32(size_t at) const { return U16(at) << 16 | U16(at + 2); }
    void Put16(size_t at, uint16_t value) { bytes.at(at) = char(value >> 8), bytes.at(at + 1) = char(value); }
    size_t Table(const char* tag) const; // where the table starts
    std::string SaveAs(const std::filesystem::path& path) const;

    std::string bytes;
};

// A copy of `font` in `dir` whose glyph for `code` claims an impossible number of contours,
// so that FreeType opens the face but refuses to load that glyph. Returns its path.
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
