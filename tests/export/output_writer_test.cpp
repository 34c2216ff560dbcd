#include "export_test_support.h"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>

TEST(OutputWriterTest, HexValuesMatchFormattedWrites)
{
    std::string expected;
    for (int v = 0; v < 256; ++v) {
        char text[8];
        std::snprintf(text, sizeof text, "0x%02X, ", v);
        expected += text;
    }
    EXPECT_EQ(Captured([](OutputWriter& out) {
                  for (int v = 0; v < 256; ++v)
                      out.WriteHexByte(static_cast<uint8_t>(v));
              }),
              expected);
}

TEST(OutputWriterTest, DecimalsMatchFormattedWrites)
{
    const int64_t signedValues[] = {0, 1, -1, 9, 10, -128, 127, INT32_MIN, INT32_MAX, INT64_MIN, INT64_MAX};
    const uint64_t unsignedValues[] = {0, 7, 10, 255, 256, 4294967295u, UINT64_MAX};
    std::string expected;
    char text[32];
    for (int64_t v : signedValues) {
        std::snprintf(text, sizeof text, "%" PRId64 "|", v);
        expected += text;
    }
    for (uint64_t v : unsignedValues) {
        std::snprintf(text, sizeof text, "%" PRIu64 "|", v);
        expected += text;
    }
    EXPECT_EQ(Captured([&](OutputWriter& out) {
                  for (int64_t v : signedValues) {
                      out.WriteSigned(v);
                      out.WriteChar('|');
                  }
                  for (uint64_t v : unsignedValues) {
                      out.WriteUnsigned(v);
                      out.WriteChar('|');
                  }
              }),
              expected);
}

// Mixed writes of every kind across many buffer refills must come out in order.
TEST(OutputWriterTest, KeepsOrderAcrossBufferRefills)
{
    std::string expected;
    std::string text = Captured([&](OutputWriter& out) {
        for (int i = 0; i < 50000; ++i) {
            out.WriteHexByte(static_cast<uint8_t>(i));
            out.WriteChar('\n');
            out.Write("abc");
            out.WriteSigned(-i);
            char piece[24];
            std::snprintf(piece, sizeof piece, "0x%02X, \nabc%d", i & 255, -i);
            expected += piece;
        }
        std::string block(200000, 'z');
        out.Write(block);
        expected += block;
    });
    EXPECT_EQ(text, expected);
}

TEST(OutputWriterTest, ReportsFailures)
{
    // Opening fails: nothing to close, and writing must not crash.
    OutputWriter missing("/nonexistent-directory/file.cpp");
    EXPECT_FALSE(missing.IsOpen());
    missing.Write(std::string(100000, 'x'));
    EXPECT_FALSE(missing.Close());

    // The device accepts the open but no byte: the failure shows at Close.
    OutputWriter full("/dev/full");
    ASSERT_TRUE(full.IsOpen());
    full.Write("#include <x.h>\n");
    EXPECT_FALSE(full.Close());

    TempDir dir;
    OutputWriter fine((dir.Path() / "ok.txt").string());
    fine.Write("ok");
    EXPECT_TRUE(fine.Close());
    EXPECT_EQ(ReadFile(dir.Path() / "ok.txt"), "ok");
}
