#include "golden_export.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

// The committed files are the reviewed output; `make regen-expected` rewrites them
// after an intended change of the format or of the test font.
TEST(GoldenExportTest, MatchesCommittedFiles)
{
    TempDir dir;
    ASSERT_TRUE(WriteGoldenExport(dir.Prefix()));
    for (const char* extension : {".cpp", ".h"}) {
        const std::string file = std::string(kGoldenBaseName) + extension;
        const std::string expected = ReadFile(std::filesystem::path(VELTRANE_EXPECTED_DIR) / file);
        ASSERT_FALSE(expected.empty()) << file << " is missing; run make regen-expected";
        EXPECT_TRUE(ReadFile(dir.Path() / file) == expected) << file << " differs from the committed file";
    }
}
