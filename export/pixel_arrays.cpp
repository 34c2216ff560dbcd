#include "export/pixel_arrays.h"

#include "export/rotations.h"

#include <cstddef>

namespace {

// How one turned image is read from the glyph's buffer: the offset of its first value,
// the step to the next value of a line and to the first value of the next line.
struct Traversal
{
    ptrdiff_t start;
    unsigned lines;
    unsigned valuesPerLine;
    ptrdiff_t valueStep;
    ptrdiff_t lineStep;
};

void Turn(const unsigned char* buffer, const Traversal& t, TurnedImage& image)
{
    image.width = t.valuesPerLine;
    image.height = t.lines;
    image.pixels.resize(size_t{t.lines} * t.valuesPerLine);
    uint8_t* to = image.pixels.data();
    ptrdiff_t lineStart = t.start;
    for (unsigned line = 0; line < t.lines; ++line, lineStart += t.lineStep) {
        ptrdiff_t at = lineStart;
        for (unsigned i = 0; i < t.valuesPerLine; ++i, at += t.valueStep)
            *to++ = buffer[at];
    }
}

void WriteArray(OutputWriter& out, unsigned int code, const TurnedImage& image)
{
    out.Write("static const uint8_t char_");
    out.WriteUnsigned(code);
    out.Write("_pixels_");
    out.WriteUnsigned(image.rotation);
    out.Write("[] = {\n");

    const uint8_t* line = image.pixels.data();
    for (unsigned y = 0; y < image.height; ++y, line += image.width) {
        // A whole line is formatted in place; only a line longer than the writer's
        // buffer goes value by value.
        if (char* p = out.Reserve(image.width * OutputWriter::kHexText + 1)) {
            for (unsigned x = 0; x < image.width; ++x)
                p = OutputWriter::PutHex(p, line[x]);
            *p++ = '\n';
            out.Commit(p);
        } else {
            for (unsigned x = 0; x < image.width; ++x)
                out.WriteHexByte(line[x]);
            out.WriteChar('\n');
        }
    }
    out.Write("};\n\n");
}

} // namespace

void TurnGlyph(const FT_Bitmap& bitmap, TurnedImages& images)
{
    const ptrdiff_t rows = bitmap.rows;
    const ptrdiff_t width = bitmap.width;
    const ptrdiff_t pitch = bitmap.pitch;
    const ptrdiff_t lastRow = (rows - 1) * pitch;
    const Traversal traversals[] = {
        // As rendered: rows top-down, each left to right.
        {0, bitmap.rows, bitmap.width, 1, pitch},
        // Quarter turn anticlockwise: columns right to left, each top-down.
        {width - 1, bitmap.width, bitmap.rows, pitch, -1},
        // Half turn: rows bottom-up, each right to left.
        {lastRow + width - 1, bitmap.rows, bitmap.width, -1, -pitch},
        // Quarter turn clockwise: columns left to right, each bottom-up.
        {lastRow, bitmap.width, bitmap.rows, -pitch, 1},
    };
    for (size_t i = 0; i < images.size(); ++i) {
        images[i].rotation = kRotations[i];
        Turn(bitmap.buffer, traversals[i], images[i]);
    }
}

void WritePixelArrays(OutputWriter& out, unsigned int code, const TurnedImages& images)
{
    for (const TurnedImage& image : images)
        WriteArray(out, code, image);
}
