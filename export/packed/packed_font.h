#pragma once

#include "export/ds/font_records.h"

#include <array>
#include <cstdint>
#include <vector>

// Packed fonts: every glyph stored once, in few bits a pixel, for the C runtime of
// runtime/veltrane_font.h, whose vt_font_t this mirrors member by member. That header is
// the format's contract; the constants below are its values.
namespace packed {

enum Field
{
    kWidth,
    kHeight,
    kLeft,
    kTop,
    kAdvance,
    kPixels,
    kCoding,
    kFields
};

// The most bits of a record's field.
constexpr unsigned kMaxFieldBits = 24;

// VT_CODING_*
constexpr unsigned kRuns = 1, kColumns = 2, kChanges = 4, kModel = 8;

// VT_MODEL_MARGIN: the pixels before a line's first that a model's window may reach.
constexpr unsigned kModelMargin = 4;

enum BlockField
{
    kBlockFirst,
    kBlockLast,
    kBlockGlyph,
    kBlockBitmap,
    kBlockFields
};

// VT_KEYS_*: how the runtime reads a text.
enum class Keys
{
    Bytes,  // bytes of an 8-bit codepage
    Unicode // code points, texts UTF-8
};

enum class KerningForm
{
    None,
    Pairs,
    Classes
};

} // namespace packed

// Which codings a glyph's pixels may take.
enum class PixelCompression
{
    Auto, // the smallest of all, the model coding among them where its tables repay
    Runs, // the smallest of plain values and the run codings, which draw fastest
    None, // plain values
    Model // the model coding for every glyph it can take, however large (to measure it)
};

// How the pixels are stored.
struct PackOptions
{
    unsigned bpp = 4; // 1, 2, 4 or 8
    PixelCompression compress = PixelCompression::Auto;
    packed::Keys keys = packed::Keys::Unicode;
};

// One character to pack: its code, its 8-bit coverage as rendered and its record values.
struct PackGlyph
{
    uint32_t code = 0;
    unsigned width = 0;
    unsigned rows = 0;
    std::vector<uint8_t> coverage; // width * rows values, row by row
    int left = 0;                  // pen to the left column
    int top = 0;                   // baseline up to the top row
    int advance = 0;
};

// The pen adjustment when `left` stands before `right`, as the source's kerning tables hold it.
struct PackKerning
{
    uint32_t left;
    uint32_t right;
    int8_t delta;
};

struct PackedFont
{
    std::vector<uint8_t> records;
    std::vector<uint8_t> pixels;
    std::vector<uint8_t> blocks; // the code lookup: entries, then bitmaps
    std::vector<uint8_t> kerning;
    std::vector<uint8_t> model; // the model coding's chances; empty without glyphs of it
    unsigned modelBits = 0;
    unsigned modelValueBits = 0;
    std::array<unsigned, 3> modelWidth{};
    std::array<unsigned, 3> modelShift{};
    uint32_t kerningRights = 0;
    uint32_t kerningDeltas = 0;
    FontRecordMetrics metrics{};
    std::array<int, packed::kFields> fieldMin{};
    packed::Keys keys = packed::Keys::Unicode;
    unsigned blockCount = 0;
    unsigned blockBits = 0;
    std::array<unsigned, packed::kBlockFields> blockFieldBits{};
    unsigned glyphBits = 0; // of a glyph index in the kerning data
    std::array<unsigned, 2> kerningEntries{};
    unsigned kerningColumns = 0;
    std::array<unsigned, packed::kFields> fieldBits{};
    unsigned recordBits = 0;
    unsigned pixelShift = 0;
    unsigned bpp = 0;
    unsigned coverageScale = 0;
    packed::KerningForm kerningForm = packed::KerningForm::None;
    std::array<unsigned, 2> kerningClassBits{};
    unsigned kerningDeltaBits = 0;
    int kerningDeltaMin = 0;
};

// The bytes vt_font_t takes on a 32-bit target, its pointers 4 bytes.
constexpr size_t kPackedFontRecordBytes = 96;

// The stored value of 8-bit coverage `value` at `bpp` bits, rounded to the nearest.
inline unsigned QuantizeCoverage(unsigned value, unsigned bpp)
{
    return (value * ((1u << bpp) - 1) + 127) / 255;
}

// Packs the glyphs (any order; each code once) and kerning pairs (each pair once, between
// codes of the glyphs). Throws std::length_error when a count or position is too large for
// the runtime's fields.
PackedFont PackFont(std::vector<PackGlyph> glyphs, const std::vector<PackKerning>& kerning,
                    const FontRecordMetrics& metrics, const PackOptions& options);
