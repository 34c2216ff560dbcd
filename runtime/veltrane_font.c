/* Draws the packed fonts veltrane_font.h describes, straight from their bit streams. */
#include "veltrane_font.h"

/* A stream of bits, most significant first: the data and the position of the next bit. */
typedef struct
{
    const uint8_t* data;
    uint32_t pos;
} stream_t;

/* The next `count` bits, at most 24, from the bytes that hold them. */
static uint32_t take(stream_t* stream, unsigned count)
{
    const uint8_t* next = stream->data + (stream->pos >> 3);
    /* The bits from the top of the first of those bytes to the last one taken, less those read. */
    int unread = (int)((stream->pos & 7) + count);
    uint32_t window = 0;
    for (; unread > 0; unread -= 8)
        window = window << 8 | *next++;
    stream->pos += count;
    return window >> -unread & ((1u << count) - 1);
}

/* Starts `stream` at bit `pos` of `data`. */
static void start(stream_t* stream, const uint8_t* data, uint32_t pos)
{
    stream->data = data;
    stream->pos = pos;
}

/* A number from 1 up as Elias gamma codes it: its bits after as many zeros less one. */
static uint32_t take_gamma(stream_t* stream)
{
    unsigned zeros = 0;
    while (!take(stream, 1))
        ++zeros;
    return 1u << zeros | take(stream, zeros);
}

/* A glyph's pixels being decoded: their stream; for the model, the arithmetic decoder (the
 * width of the interval left and the code's offset in it, the code being the 32 bits of the
 * stream from the interval's start) and the lines its contexts look at. */
typedef struct
{
    uint32_t range;
    uint32_t code;
    stream_t stream;
    /* The pixels not 0 of the line being decoded and the two before it, a pixel's bit at
     * VT_MODEL_MARGIN + its place along. */
    uint32_t lines[3];
    /* The values of the line being decoded before the pixel, of the line before from it on. */
    uint8_t values[32 - VT_MODEL_MARGIN];
} decoder_t;

/* The next bit, 0 with chance `zero` / 256 (0: certainly 1). */
static unsigned decode_bit(decoder_t* decoder, unsigned zero)
{
    uint32_t bound = (decoder->range >> 8) * zero, range = decoder->range, code = decoder->code;
    const unsigned bit = code >= bound;
    if (bit) {
        code -= bound;
        bound = range - bound;
    }
    /* From at least 2^24, either side leaves at least 2^16 (or all of it, `zero` 0): one
     * step brings it back. */
    range = bound;
    if (!(range >> 24)) {
        range <<= 8;
        code = code << 8 | take(&decoder->stream, 8);
    }
    decoder->range = range;
    decoder->code = code;
    return bit;
}

/* The model's context of the pixel at `along` in the line being decoded: the bits of
 * lines[i] (the line, the one before, the one before that) in the font's window of each. */
static uint32_t context(const vt_font_t* font, const uint32_t* lines, int along)
{
    uint32_t bits = 0;
    unsigned i;
    for (i = 0; i < 3; ++i)
        bits = bits << font->model_width[i] |
               (lines[i] >> (along + font->model_shift[i]) & ((1u << font->model_width[i]) - 1));
    return bits;
}

/* The value of the pixel at `along` of line `across` as the model codes it, marked in the
 * lines and the values. */
static unsigned decode_pixel(const vt_font_t* font, decoder_t* decoder, int along, int across)
{
    const unsigned bpp = font->bpp, full = (1u << bpp) - 1, drop = bpp - font->model_value_bits;
    const uint8_t* table = font->model;
    unsigned value = 0;
    /* A line starts: the lines move back. */
    if (!along) {
        decoder->lines[2] = decoder->lines[1];
        decoder->lines[1] = decoder->lines[0];
        decoder->lines[0] = 0;
    }
    /* Not 0?; then, beyond 1 bit, the value's bits from the top. */
    if (decode_bit(decoder, table[context(font, decoder->lines, along)])) {
        value = full;
        if (full > 1) {
            /* The kept bits of the values before it on its line and above it; the values
             * of the line before are not there to read on the first. */
            const unsigned west = along ? decoder->values[along - 1] >> drop : 0;
            const unsigned north = across ? decoder->values[along] >> drop : 0;
            table += (1u << font->model_bits) + ((west << (bpp - drop) | north) << bpp);
            for (value = 1; value <= full;)
                value = value << 1 | decode_bit(decoder, table[value]);
            value -= full + 1;
        }
    }
    decoder->lines[0] |= (uint32_t)(value != 0) << (along + VT_MODEL_MARGIN);
    decoder->values[along] = (uint8_t)value;
    return value;
}

/* The glyph's index in the records, or -1 for a code the font lacks. */
static int32_t find_glyph(const vt_font_t* font, uint32_t code)
{
    const uint8_t* const bits = font->block_field_bits;
    uint32_t low = 0, high = font->block_count, offset, count, set;
    int32_t index;
    stream_t stream;
    /* The last block that starts at or before the code (the first block when none does,
     * which then lacks it); a font has at least one block. */
    stream.data = font->blocks;
    while (high - low > 1) {
        const uint32_t middle = (low + high) >> 1;
        stream.pos = middle * font->block_bits;
        if (take(&stream, bits[VT_BLOCK_FIRST]) <= code)
            low = middle;
        else
            high = middle;
    }
    stream.pos = low * font->block_bits;
    offset = code - take(&stream, bits[VT_BLOCK_FIRST]);
    if (offset > take(&stream, bits[VT_BLOCK_LAST]))
        return -1;
    index = (int32_t)take(&stream, bits[VT_BLOCK_GLYPH]);
    stream.pos = take(&stream, bits[VT_BLOCK_BITMAP]);
    if (!stream.pos)
        return index + (int32_t)offset;
    /* The glyphs of the bitmap's set bits before the code's, counted 24 bits at a time. */
    for (; offset; offset -= count) {
        count = offset < 24 ? offset : 24;
        for (set = take(&stream, count); set; set &= set - 1)
            ++index;
    }
    return take(&stream, 1) ? index : -1;
}

/* The pen adjustment between the glyphs `left` and `right` after it. */
static int kerning(const vt_font_t* font, int32_t left, int32_t right)
{
    const unsigned key_bits = font->glyph_bits, pairs = font->kerning_form == VT_KERNING_PAIRS;
    uint32_t right_class = 0, found;
    int32_t key = right;
    unsigned list;
    if (!font->kerning)
        return 0;
    /* The entry of the glyphs in a list sorted by its keys: with pairs, that of the right
     * glyph and then the left one in list 0; with classes, the right glyph's in list 1, then
     * (as most characters have no pair to the left of them) the left glyph's in list 0. */
    for (list = !pairs;; list = 0, key = left) {
        const unsigned value_bits = pairs ? font->kerning_delta_bits : font->kerning_class_bits[list];
        const unsigned entry_bits = (1 + pairs) * key_bits + value_bits;
        uint32_t low = 0, high = font->kerning_entries[list];
        stream_t stream;
        stream.data = font->kerning;
        for (;;) {
            const uint32_t middle = (low + high) >> 1;
            int32_t order;
            if (low >= high)
                return 0;
            stream.pos = (list ? font->kerning_rights : 0) + middle * entry_bits;
            order = (int32_t)take(&stream, key_bits) - key;
            if (!order && pairs)
                order = (int32_t)take(&stream, key_bits) - left;
            if (!order)
                break;
            if (order < 0)
                low = middle + 1;
            else
                high = middle;
        }
        found = take(&stream, value_bits);
        if (!list) {
            /* With classes, the delta of the left class's row, the right class's column. */
            if (!pairs) {
                stream.pos =
                    font->kerning_deltas + (found * font->kerning_columns + right_class) * font->kerning_delta_bits;
                found = take(&stream, font->kerning_delta_bits);
            }
            break;
        }
        right_class = found;
    }
    return (int)found + font->kerning_delta_min;
}

/* Plots the glyph of `field` with the pen at (x, y), turned by (cosine, sine). */
static void draw_glyph(const vt_font_t* font, const int32_t* field, int x, int y, int cosine, int sine, vt_plot_fn plot,
                       void* ctx)
{
    const unsigned coding = (unsigned)field[VT_FIELD_CODING], bpp = font->bpp;
    const unsigned columns = coding & VT_CODING_COLUMNS;
    /* With VT_CODING_CHANGES, all ones: the bits of the pixel before that a value changes. */
    const unsigned changes = coding & VT_CODING_CHANGES ? ~0u : 0;
    /* Pixels along a line of the scan: a row, or a column with VT_CODING_COLUMNS. */
    const int line = field[columns ? VT_FIELD_HEIGHT : VT_FIELD_WIDTH];
    decoder_t decoder;
    stream_t* const stream = &decoder.stream;
    uint32_t left = (uint32_t)field[VT_FIELD_WIDTH] * (uint32_t)field[VT_FIELD_HEIGHT], zeros = 0;
    unsigned value = 0;
    uint32_t count; /* pixels a step covers */
    int along = 0, across = 0;
    start(stream, font->pixels, (uint32_t)field[VT_FIELD_PIXELS] << font->pixel_shift);
    /* Set for every coding, which spares compilers a doubt whether the model's are. */
    decoder.range = 0xFFFFFFFFu;
    decoder.code = 0;
    if (coding & VT_CODING_MODEL) {
        /* Not lines[2]: the first pixel starts a line, moving lines[1] to it. */
        decoder.lines[0] = decoder.lines[1] = 0;
        decoder.code = take(stream, 16) << 16;
        decoder.code |= take(stream, 16);
    }
    /* A turned pixel covers the square left of or above its corner. */
    x -= cosine + sine < 0;
    y -= sine - cosine > 0;
    for (; left; left -= count) {
        unsigned stored;
        count = 1;
        if (coding & VT_CODING_MODEL) {
            stored = decode_pixel(font, &decoder, along, across);
        } else if (coding & VT_CODING_RUNS) {
            /* zeros: the run's zero pixels left + 1 (as coded), 0 before it is read. */
            if (!zeros)
                zeros = take_gamma(stream);
            if (--zeros) {
                /* A run that leaves the pixels 0 is stepped over at once. */
                if (!(value & changes))
                    count = zeros < left ? zeros : left;
                zeros -= count - 1;
                stored = 0;
            } else {
                /* At 1 bit a pixel, none: 1. */
                stored = bpp > 1 ? take(stream, bpp) : 1;
            }
        } else {
            stored = take(stream, bpp);
        }
        value = stored ^ (value & changes);
        if (value) {
            const int dx = field[VT_FIELD_LEFT] + (columns ? across : along);
            const int dy = (columns ? along : across) - field[VT_FIELD_TOP];
            plot(ctx, x + cosine * dx + sine * dy, y - sine * dx + cosine * dy,
                 (uint8_t)(value * font->coverage_scale));
        }
        for (along += (int)count; along >= line; along -= line)
            ++across;
    }
}

/* Not a character: what a byte that starts no well-formed UTF-8 sequence decodes to. */
#define NO_CODE 0xFFFFFFFFu

/* The character at *text, stepping past it: well-formed UTF-8 as Unicode's Table 3-7 has
 * it, else NO_CODE and a step of one byte. Never reads past a 0 byte, which no
 * continuation byte is. */
static uint32_t next_utf8(const uint8_t** text)
{
    const uint8_t* next = *text;
    uint32_t code = *next++;
    if (code >= 0x80) {
        /* Continuation bytes after the lead byte, which C0 and C1 (overlong forms only)
         * and F5 and up (past U+10FFFF) are not. */
        const unsigned count = 1 + (code >= 0xE0) + (code >= 0xF0);
        unsigned left;
        if (code - 0xC2 > 0xF4 - 0xC2)
            goto skip;
        code &= 0x3Fu >> count;
        for (left = count; left; --left) {
            if ((*next & 0xC0) != 0x80)
                goto skip;
            code = code << 6 | (*next++ & 0x3Fu);
        }
        /* Overlong forms of three and four bytes, surrogates, codes past U+10FFFF. */
        if (!(code >> (5 * count + 1)) || (code & 0xFFFFF800u) == 0xD800 || code > 0x10FFFF)
            goto skip;
    }
    *text = next;
    return code;
skip:
    ++*text;
    return NO_CODE;
}

/* Draws the text up to its 0 byte or, without a text, the one code. */
static int draw_codes(const vt_font_t* font, const uint8_t* text, int x, int y, int rotation, vt_plot_fn plot,
                      void* ctx, uint32_t code)
{
    /* The turn; both 0 for a rotation other than 0, 90, 180 and 270. */
    const int cosine = (rotation == 0) - (rotation == 180), sine = (rotation == 90) - (rotation == 270);
    int advance = 0;
    int32_t previous = -1;
    if (!cosine && !sine)
        return 0;
    while (!text || *text) {
        int32_t index, field[VT_RECORD_FIELDS];
        stream_t stream;
        unsigned f;
        if (text)
            code = font->keys == VT_KEYS_UNICODE ? next_utf8(&text) : *text++;
        index = find_glyph(font, code);
        if (index >= 0) {
            if (previous >= 0)
                advance += kerning(font, previous, index);
            start(&stream, font->records, (uint32_t)index * font->record_bits);
            for (f = 0; f < VT_RECORD_FIELDS; ++f)
                field[f] = (int32_t)take(&stream, font->field_bits[f]) + font->field_min[f];
            if (plot)
                draw_glyph(font, field, x + cosine * advance, y - sine * advance, cosine, sine, plot, ctx);
            advance += field[VT_FIELD_ADVANCE];
            previous = index;
        }
        if (!text)
            break;
    }
    return advance;
}

int vt_draw_text(const vt_font_t* font, const char* text, int x, int y, int rotation, vt_plot_fn plot, void* ctx)
{
    return draw_codes(font, (const uint8_t*)text, x, y, rotation, plot, ctx, 0);
}

int vt_draw_char(const vt_font_t* font, uint32_t code, int x, int y, int rotation, vt_plot_fn plot, void* ctx)
{
    return draw_codes(font, NULL, x, y, rotation, plot, ctx, code);
}

int vt_text_width(const vt_font_t* font, const char* text)
{
    return vt_draw_text(font, text, 0, 0, 0, NULL, NULL);
}

int vt_font_height(const vt_font_t* font)
{
    return font->height;
}

int vt_font_ascender(const vt_font_t* font)
{
    return font->ascender;
}

int vt_font_descender(const vt_font_t* font)
{
    return font->descender;
}
