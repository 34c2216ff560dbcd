// Each rotated panel of a proof is drawn from its own rotation's pixel arrays and turned
// positions; it must equal panel 0 turned by the same angle, pixel for pixel.

#include "export/ds/font_source.h"
#include "export/files/in_place_file.h"
#include "proof/proof_picture.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

// Turned as the exported pixel arrays are: 90 a quarter turn anticlockwise.
GreyImage Turned(const GreyImage& image, unsigned rotation)
{
    const bool quarter = rotation % 180 != 0;
    GreyImage turned{quarter ? image.height : image.width, quarter ? image.width : image.height, image.pixels};
    for (unsigned y = 0; y < image.height; ++y)
        for (unsigned x = 0; x < image.width; ++x) {
            const unsigned tx[] = {x, y, image.width - 1 - x, image.height - 1 - y};
            const unsigned ty[] = {y, image.width - 1 - x, image.height - 1 - y, x};
            turned.pixels[size_t{ty[rotation / 90]} * turned.width + tx[rotation / 90]] =
                image.pixels[size_t{y} * image.width + x];
        }
    return turned;
}

// The part of `image` from column `left`, `width` wide and `height` high.
GreyImage Cut(const GreyImage& image, unsigned left, unsigned width, unsigned height)
{
    GreyImage part{width, height, {}};
    for (unsigned y = 0; y < height; ++y)
        part.pixels.insert(part.pixels.end(), image.pixels.begin() + y * image.width + left,
                           image.pixels.begin() + y * image.width + left + width);
    return part;
}

TEST(ProofPanels, EachIsPanelZeroTurned)
{
    const struct
    {
        std::string font;
        unsigned height;
        std::string text;
    } rows[] = {
        // Kerned pairs both ways and a positive one; ink left of the pen and below the baseline.
        {kTestFont, 16, "AVAT.\nVjA V."},
        {kDejaVuSans, 13, "AVWAy,j Tg\nfi{Q}"},
        {kTerminus, 16, "AVgj|Q\n@"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.font + " " + std::to_string(row.height));
        FTFont font;
        font.LoadFace(row.font.c_str());
        font.SetPixelSize(row.height);
        CharCodeList codes(95);
        std::iota(codes.begin(), codes.end(), 32);
        const ExportCharacters characters = ListExportCharacters(codes, nullptr);
        WrittenFont written;
        InPlaceFile discarded("/dev/null");
        ASSERT_TRUE(discarded.Open());
        OutputWriter out(discarded);
        WriteFontSource(out, font, "proof", characters, {}, {&written});
        ProofLines lines;
        ASSERT_EQ(ReadProofText(row.text, characters, lines), std::nullopt);
        const ProofLayout layout = LayOutProof(written, lines, row.height);
        const GreyImage zero = DrawProofPanel(written, lines, layout, 0);
        for (unsigned rotation : {90u, 180u, 270u})
            EXPECT_TRUE(DrawProofPanel(written, lines, layout, rotation) == Turned(zero, rotation)) << rotation;
        // A picture of chosen rotations shows their panels in the order chosen, the margin apart.
        const GreyImage picture = DrawProof(written, lines, LayOutProof(written, lines, row.height, {90, 0}));
        const GreyImage ninety = Turned(zero, 90);
        EXPECT_EQ(picture.width, ninety.width + row.height + zero.width);
        EXPECT_TRUE(Cut(picture, 0, ninety.width, ninety.height) == ninety);
        EXPECT_TRUE(Cut(picture, ninety.width + row.height, zero.width, zero.height) == zero);
    }
}

} // namespace
