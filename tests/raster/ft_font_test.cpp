#include "raster/ft_font.h"

#include <gtest/gtest.h>

TEST(FTFontTest, StartsWithoutFace)
{
    FTFont font;
    EXPECT_FALSE(font.HasFace());
    EXPECT_EQ(font.GetLineHeight(), 0);
}
