/* Draws the packed fonts veltrane_font.h describes, straight from their bit streams. */
#include "veltrane_font.h"

/* A stream of bits, most significant first, read a byte at a time into a window. */
typedef struct
{
    const uint8_t* next;
    uint32_t window;
    unsigned bits; /* not yet taken at the bottom of the window */
} stream_t;

/* The next `count` bits, at most 24. */
static uint32_t take(stream_t* stream, unsigned count)
{
    while (stream->bits < count) {
        stream->window = stream->window << 8 | *stream->next++;
        stream->bits += 8;
    }
    stream->bits -= count;
    return (stream->window >> stream->bits) & ((1u << count) - 1);
}

/* Starts `stream` at bit `pos` of `data`. */
static void start(stream_t* stream, const uint8_t* data, uint32_t pos)
{
    stream->next = data + (pos >> 3);
    stream->window = 0;
    stream->bits = 0;
    take(stream, pos & 7);
}

/* A length as Elias gamma codes it: the bits of length + 1 after as many zeros less one. */
static uint32_t take_run(stream_t* stream)
{
    unsigned zeros = 0;
    while (!take(stream, 1))
        ++zeros;
    return (1u << zeros | take(stream, zeros)) - 1;
}

/* A binary arithmetic decoder: the width of the interval left and the code's offset in it,
 * the code being the 32 bits of the stream from the interval's start. */
typedef struct
{
    stream_t stream;
    uint32_t range;
    uint32_t code;
} decoder_t;

/* The next bit, 0 with chance `zero` / 256 (0: certainly 1). */
static unsigned decode_bit(decoder_t* decoder, unsigned zero)
{
    uint32_t bound = (decoder->range >> 8) * zero;
    const unsigned bit = decoder->code >= bound;
    if (bit) {
        decoder->code -= bound;
        bound = decoder->range - bound;
    }
    for (decoder->range = bound; !(decoder->range >> 24); decoder->range <<= 8)
        decoder->code = decoder->code << 8 | take(&decoder->stream, 8);
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

/* The value of the pixel at `along` as the model codes it, marked in the lines not 0
 * (lines[0]) and full (lines[3]). */
static unsigned decode_pixel(const vt_font_t* font, decoder_t* decoder, uint32_t* lines, int along)
{
    const unsigned full = (1u << font->bpp) - 1;
    const uint8_t* table = font->model;
    unsigned value = 0;
    /* Not 0?; beyond 1 bit, full?; else the value's bits from the top. */
    if (decode_bit(decoder, table[context(font, lines, along)])) {
        value = full;
        table += 1u << font->model_bits;
        if (full > 1 && !decode_bit(decoder, table[context(font, lines + 3, along)])) {
            table += 1u << font->model_bits;
            for (value = 1; value <= full;)
                value = value << 1 | decode_bit(decoder, table[value]);
            value -= full + 1;
        }
    }
    lines[0] |= (uint32_t)(value != 0) << (along + VT_MODEL_MARGIN);
    lines[3] |= (uint32_t)(value == full) << (along + VT_MODEL_MARGIN);
    return value;
}

/* The `count` fields of entry `index` of `data`, `entry_bits` apart, each of bits[f] bits
 * plus min[f] (0 without `min`). */
static void read_fields(const uint8_t* data, uint32_t index, unsigned entry_bits, const uint8_t* bits,
                        const int16_t* min, unsigned count, int32_t* field)
{
    stream_t stream;
    unsigned f;
    start(&stream, data, index * entry_bits);
    for (f = 0; f < count; ++f)
        field[f] = (int32_t)take(&stream, bits[f]) + (min ? min[f] : 0);
}

/* The glyph's index in the records, or -1 for a code the font lacks. */
static int32_t find_glyph(const vt_font_t* font, uint32_t code)
{
    uint32_t low = 0, high = font->block_count, offset, count, bits;
    int32_t block[VT_BLOCK_FIELDS], index;
    stream_t stream;
    /* The last block that starts at or before the code (the first block when none does,
     * which then lacks it); a font has at least one block. */
    while (high - low > 1) {
        const uint32_t middle = (low + high) >> 1;
        read_fields(font->blocks, middle, font->block_bits, font->block_field_bits, NULL, 1, block);
        if ((uint32_t)block[VT_BLOCK_FIRST] <= code)
            low = middle;
        else
            high = middle;
    }
    read_fields(font->blocks, low, font->block_bits, font->block_field_bits, NULL, VT_BLOCK_FIELDS, block);
    offset = code - (uint32_t)block[VT_BLOCK_FIRST];
    if (offset > (uint32_t)block[VT_BLOCK_LAST])
        return -1;
    if (!block[VT_BLOCK_BITMAP])
        return block[VT_BLOCK_GLYPH] + (int32_t)offset;
    /* The glyphs of the bitmap's set bits before the code's, counted 24 bits at a time. */
    index = block[VT_BLOCK_GLYPH];
    start(&stream, font->blocks, (uint32_t)block[VT_BLOCK_BITMAP]);
    for (; offset; offset -= count) {
        count = offset < 24 ? offset : 24;
        for (bits = take(&stream, count); bits; bits &= bits - 1)
            ++index;
    }
    return take(&stream, 1) ? index : -1;
}

/* The value after the keys in `count` sorted entries `entry_bits` apart from bit `base`,
 * each `keys` keys of `key_bits` (1 or 2, compared in order) and then the value; -1 when
 * no entry has those keys. */
static int32_t find_entry(const uint8_t* data, uint32_t base, uint32_t count, unsigned entry_bits, unsigned key_bits,
                          unsigned keys, int32_t key, int32_t second_key)
{
    uint32_t low = 0, high = count;
    while (low < high) {
        const uint32_t middle = (low + high) >> 1;
        stream_t stream;
        int32_t order;
        start(&stream, data, base + middle * entry_bits);
        order = (int32_t)take(&stream, key_bits) - key;
        if (!order && keys > 1)
            order = (int32_t)take(&stream, key_bits) - second_key;
        if (!order)
            return (int32_t)take(&stream, entry_bits - keys * key_bits);
        if (order < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return -1;
}

/* The pen adjustment between the glyphs `left` and `right` after it. */
static int kerning(const vt_font_t* font, int32_t left, int32_t right)
{
    const uint8_t* data = font->kerning;
    const unsigned delta_bits = font->kerning_delta_bits, glyph_bits = font->glyph_bits;
    int32_t stored;
    if (!data)
        return 0;
    if (font->kerning_form == VT_KERNING_PAIRS) {
        stored = find_entry(data, 0, font->kerning_entries[0], 2 * glyph_bits + delta_bits, glyph_bits, 2, right, left);
    } else {
        /* The right glyph first: most characters have no pair to the left of them. */
        const int32_t right_class = find_entry(data, font->kerning_rights, font->kerning_entries[1],
                                               glyph_bits + font->kerning_class_bits[1], glyph_bits, 1, right, 0);
        int32_t left_class;
        stream_t stream;
        if (right_class < 0 ||
            (left_class = find_entry(data, 0, font->kerning_entries[0], glyph_bits + font->kerning_class_bits[0],
                                     glyph_bits, 1, left, 0)) < 0)
            return 0;
        start(&stream, data,
              font->kerning_deltas +
                  ((uint32_t)left_class * font->kerning_columns + (uint32_t)right_class) * delta_bits);
        stored = (int32_t)take(&stream, delta_bits);
    }
    return stored < 0 ? 0 : stored + font->kerning_delta_min;
}

/* Plots the glyph of `field` with the pen at (x, y), turned by (cosine, sine). */
static void draw_glyph(const vt_font_t* font, const int32_t* field, int x, int y, int cosine, int sine, vt_plot_fn plot,
                       void* ctx)
{
    const unsigned coding = (unsigned)field[VT_FIELD_CODING], bpp = font->bpp;
    const unsigned columns = coding & VT_CODING_COLUMNS;
    /* Pixels along a line of the scan: a row, or a column with VT_CODING_COLUMNS. */
    const int line = field[columns ? VT_FIELD_HEIGHT : VT_FIELD_WIDTH];
    decoder_t decoder;
    stream_t* const stream = &decoder.stream;
    /* For the model: the pixels not 0 (0 to 2), and those full (3 to 5), of the line being
     * decoded and the two before it, a pixel's bit at VT_MODEL_MARGIN + its place along. */
    uint32_t lines[6];
    uint32_t left = (uint32_t)field[VT_FIELD_WIDTH] * (uint32_t)field[VT_FIELD_HEIGHT], zeros = 0;
    unsigned value = 0, i;
    int along = 0, across = 0, run_due = 1;
    for (i = 0; i < 6; ++i)
        lines[i] = 0;
    start(stream, font->pixels, (uint32_t)field[VT_FIELD_PIXELS] << font->pixel_shift);
    if (coding & VT_CODING_MODEL) {
        decoder.range = 0xFFFFFFFFu;
        decoder.code = take(stream, 16) << 16;
        decoder.code |= take(stream, 16);
    }
    /* A turned pixel covers the square left of or above its corner. */
    x -= cosine + sine < 0;
    y -= sine - cosine > 0;
    while (left) {
        unsigned stored;
        uint32_t count = 1; /* pixels this step covers */
        if (coding & VT_CODING_MODEL) {
            stored = decode_pixel(font, &decoder, lines, along);
        } else if (coding & VT_CODING_RUNS) {
            if (run_due) {
                zeros = take_run(stream);
                run_due = 0;
            }
            if (zeros) {
                /* A run that leaves the pixels 0 is stepped over at once. */
                if (!(coding & VT_CODING_CHANGES) || !value)
                    count = zeros < left ? zeros : left;
                zeros -= count;
                stored = 0;
            } else {
                stored = bpp > 1 ? take(stream, bpp) : 1;
                run_due = 1;
            }
        } else {
            stored = take(stream, bpp);
        }
        value = coding & VT_CODING_CHANGES ? stored ^ value : stored;
        left -= count;
        if (value) {
            const int dx = field[VT_FIELD_LEFT] + (columns ? across : along);
            const int dy = (columns ? along : across) - field[VT_FIELD_TOP];
            plot(ctx, x + cosine * dx + sine * dy, y - sine * dx + cosine * dy, (uint8_t)(value * font->coverage_scale));
        }
        for (along += (int)count; along >= line; along -= line) {
            ++across;
            for (i = 0; i < 6; i += 3) {
                lines[i + 2] = lines[i + 1];
                lines[i + 1] = lines[i];
                lines[i] = 0;
            }
        }
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
    /* Continuation bytes after the lead byte. */
    const unsigned count = (code >= 0xC0) + (code >= 0xE0) + (code >= 0xF0);
    unsigned left = count;
    if (code >= 0x80) {
        /* C0 and C1 only start overlong forms, F5 and up codes past U+10FFFF. */
        if (code < 0xC2 || code > 0xF4)
            goto skip;
        code &= 0x3Fu >> count;
        for (; left; --left) {
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
static int draw_codes(const vt_font_t* font, const uint8_t* text, uint32_t code, int x, int y, int rotation,
                      vt_plot_fn plot, void* ctx)
{
    /* The turn; both 0 for a rotation other than 0, 90, 180 and 270. */
    const int cosine = (rotation == 0) - (rotation == 180), sine = (rotation == 90) - (rotation == 270);
    int advance = 0;
    int32_t previous = -1;
    if (!cosine && !sine)
        return 0;
    while (!text || *text) {
        int32_t index, field[VT_RECORD_FIELDS];
        if (text)
            code = font->keys == VT_KEYS_UNICODE ? next_utf8(&text) : *text++;
        index = find_glyph(font, code);
        if (index >= 0) {
            if (previous >= 0)
                advance += kerning(font, previous, index);
            read_fields(font->records, (uint32_t)index, font->record_bits, font->field_bits, font->field_min,
                        VT_RECORD_FIELDS, field);
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
    return draw_codes(font, (const uint8_t*)text, 0, x, y, rotation, plot, ctx);
}

int vt_draw_char(const vt_font_t* font, uint32_t code, int x, int y, int rotation, vt_plot_fn plot, void* ctx)
{
    return draw_codes(font, NULL, code, x, y, rotation, plot, ctx);
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
