#include "export/ds/pixel_arrays.h"

#include "export/ds/rotations.h"

#include <cstddef>

namespace {

// How one turned image is read from the glyph's buffer: the offset of its first value,
// the step to the next value of a line and to the first value of the next line.
struct Traversal
{
    unsigned rotation;
    ptrdiff_t start;
    unsigned lines;
    unsigned valuesPerLine;
    ptrdiff_t valueStep;
    ptrdiff_t lineStep;
};

// The four turns, in the order of kRotations.
std::array<Traversal, 4> TraversalsOf(const FT_Bitmap& bitmap)
{
    const ptrdiff_t width = bitmap.width;
    const ptrdiff_t pitch = bitmap.pitch;
    const ptrdiff_t lastRow = (static_cast<ptrdiff_t>(bitmap.rows) - 1) * pitch;
    return {{
        // As rendered: rows top-down, each left to right.
        {kRotations[0], 0, bitmap.rows, bitmap.width, 1, pitch},
        // Quarter turn anticlockwise: columns right to left, each top-down.
        {kRotations[1], width - 1, bitmap.width, bitmap.rows, pitch, -1},
        // Half turn: rows bottom-up, each right to left.
        {kRotations[2], lastRow + width - 1, bitmap.rows, bitmap.width, -1, -pitch},
        // Quarter turn clockwise: columns left to right, each bottom-up.
        {kRotations[3], lastRow, bitmap.width, bitmap.rows, -pitch, 1},
    }};
}

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

void WriteArray(OutputWriter& out, unsigned int code, const unsigned char* pixels, const Traversal& t)
{
    out.Write("static const uint8_t char_");
    out.WriteUnsigned(code);
    out.Write("_pixels_");
    out.WriteUnsigned(t.rotation);
    out.Write("[] = {\n");

    ptrdiff_t lineStart = t.start;
    for (unsigned line = 0; line < t.lines; ++line, lineStart += t.lineStep) {
        ptrdiff_t at = lineStart;
        // A whole line is formatted in place; only a line longer than the writer's
        // buffer goes value by value.
        if (char* p = out.Reserve(t.valuesPerLine * OutputWriter::kHexText + 1)) {
            for (unsigned i = 0; i < t.valuesPerLine; ++i, at += t.valueStep)
                p = OutputWriter::PutHex(p, pixels[at]);
            *p++ = '\n';
            out.Commit(p);
        } else {
            for (unsigned i = 0; i < t.valuesPerLine; ++i, at += t.valueStep)
                out.WriteHexByte(pixels[at]);
            out.WriteChar('\n');
        }
    }
    out.Write("};\n\n");
}

} // namespace

void TurnGlyph(const FT_Bitmap& bitmap, TurnedImages& images)
{
    const std::array<Traversal, 4> traversals = TraversalsOf(bitmap);
    for (size_t i = 0; i < images.size(); ++i)
        Turn(bitmap.buffer, traversals[i], images[i]);
}

void WritePixelArrays(OutputWriter& out, unsigned int code, const FT_Bitmap& bitmap, const RotationList& rotations)
{
    for (const Traversal& t : TraversalsOf(bitmap)) {
        if (HasRotation(rotations, t.rotation))
            WriteArray(out, code, bitmap.buffer, t);
    }
}
