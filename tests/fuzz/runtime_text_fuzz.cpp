// Arbitrary bytes as a text for vt_draw_text, over packed fonts of each key kind, kerning
// form and pixel coding: the first byte picks the font and the rotation, the rest is the text. Every plot
// must land within the glyphs' reach of the pen, and the width must be the drawn advance.
#include "export/packed/packed_font.h"
#include "runtime/runtime_font.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

struct Fonts
{
    std::vector<PackedFont> packed;
    std::vector<vt_font_t> runtime;
};

// Glyphs of up to 3 by 3 pixels over the code space: ASCII, Latin-1, a few scattered
// and astral codes, CJK in runs and bitmaps; or, in bytes, every other byte.
PackedFont MakeFont(packed::Keys keys, bool classes, unsigned bpp, PixelCompression compress)
{
    std::vector<uint32_t> codes;
    if (keys == packed::Keys::Bytes) {
        for (uint32_t byte = 1; byte < 256; byte += 2)
            codes.push_back(byte);
    } else {
        for (uint32_t code = 32; code < 256; ++code)
            codes.push_back(code);
        for (uint32_t code = 0x4E00; code < 0x5200; code += code % 7 ? 1 : 5)
            codes.push_back(code);
        for (uint32_t code : {0x20ACu, 0xFFFDu, 0xFFFFu, 0x10000u, 0x1F600u, 0x10FFFFu})
            codes.push_back(code);
    }
    std::vector<PackGlyph> glyphs;
    for (uint32_t code : codes) {
        PackGlyph glyph;
        glyph.code = code;
        glyph.width = code % 4;
        glyph.rows = code % 3 + 1;
        for (unsigned i = 0; i < glyph.width * glyph.rows; ++i)
            glyph.coverage.push_back(static_cast<uint8_t>(code * 31 + i * 97));
        glyph.left = static_cast<int>(code % 3) - 1;
        glyph.top = static_cast<int>(code % 5);
        glyph.advance = static_cast<int>(code % 6);
        glyphs.push_back(glyph);
    }
    // Pairs of every glyph with a few: many rights sharing their lefts' deltas favour classes.
    std::vector<PackKerning> kerning;
    for (size_t i = 0; i < codes.size(); i += classes ? 1 : 7)
        for (size_t j = 0; j < codes.size(); j += classes ? 3 : 11)
            kerning.push_back({codes[i], codes[j], static_cast<int8_t>(static_cast<int>(i % 5) - 2)});
    PackOptions options;
    options.bpp = bpp;
    options.keys = keys;
    options.compress = compress;
    return PackFont(glyphs, kerning, {16, 12, -4}, options);
}

const Fonts& AllFonts()
{
    static const Fonts fonts = [] {
        Fonts made;
        for (packed::Keys keys : {packed::Keys::Unicode, packed::Keys::Bytes})
            for (bool classes : {false, true})
                for (unsigned bpp : {1u, 4u})
                    for (PixelCompression compress :
                         {PixelCompression::None, PixelCompression::Runs, PixelCompression::Model})
                        made.packed.push_back(MakeFont(keys, classes, bpp, compress));
        for (const PackedFont& font : made.packed)
            made.runtime.push_back(RuntimeFont(font));
        return made;
    }();
    return fonts;
}

struct Reach
{
    long limit; // how far from the pen a plot may land either way
};

void Plot(void* ctx, int x, int y, uint8_t coverage)
{
    const Reach& reach = *static_cast<Reach*>(ctx);
    if (coverage == 0 || std::labs(x) > reach.limit || std::labs(y) > reach.limit)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const Fonts& fonts = AllFonts();
    const vt_font_t& font = fonts.runtime[data[0] % fonts.runtime.size()];
    const int rotation = static_cast<int>(data[0] / fonts.runtime.size() % 5 * 90); // 360 draws nothing
    // Exactly the text and a 0 byte, so that reading past it is the sanitizer's error.
    std::vector<char> text(data + 1, data + size);
    text.push_back(0);
    Reach reach{static_cast<long>(text.size()) * 12 + 16};
    const int advance = vt_draw_text(&font, text.data(), 0, 0, rotation, Plot, &reach);
    if (rotation != 360 && advance != vt_text_width(&font, text.data()))
        std::abort();
    return 0;
}
