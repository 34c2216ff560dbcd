#pragma once
// The fonts the raster tests render with, and damaged copies of the tests' own font.

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

inline const std::string kTestFont = std::string(VELTRANE_TEST_FONT_DIR) + "/veltrane-test.ttf";
inline const std::string kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline const std::string kDejaVuMono = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf";
inline const std::string kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";

// The bytes of the test font, to be patched and saved under a temporary name.
struct TestFontBytes
{
    std::string bytes{std::istreambuf_iterator<char>(std::ifstream(kTestFont, std::ios::binary).rdbuf()), {}};

    uint32_t U16(size_t at) const { return uint32_t(uint8_t(bytes[at])) << 8 | uint8_t(bytes[at + 1]); }
    uint32_t U32(size_t at) const { return U16(at) << 16 | U16(at + 2); }
    void Put16(size_t at, uint16_t value)
    {
        bytes[at] = char(value >> 8);
        bytes[at + 1] = char(value & 0xFF);
    }
    size_t Table(const char* tag) const
    {
        for (size_t record = 12; record < 12 + 16 * U16(4); record += 16)
            if (bytes.compare(record, 4, tag) == 0)
                return U32(record + 8);
        ADD_FAILURE() << "no table " << tag;
        return 0;
    }
    std::string SaveAs(const std::string& name) const
    {
        const std::string path = testing::TempDir() + name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
};
