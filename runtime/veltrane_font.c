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

/* The glyph's index in the records, or -1 for a code the font lacks. */
static int find_glyph(const vt_font_t* font, unsigned code)
{
    const uint8_t* range = font->ranges;
    int index = 0;
    unsigned left;
    for (left = font->range_count; left; --left, range += 2) {
        unsigned offset = code - range[0];
        if (offset <= range[1])
            return index + (int)offset;
        index += range[1] + 1;
    }
    return -1;
}

static void read_record(const vt_font_t* font, int index, int32_t* field)
{
    stream_t stream;
    int f;
    start(&stream, font->records, (uint32_t)index * font->record_bits);
    for (f = 0; f < VT_RECORD_FIELDS; ++f)
        field[f] = (int32_t)take(&stream, font->field_bits[f]) + font->field_min[f];
}

/* The value after `key` in `count` sorted entries `entry_bits` apart from bit `base`,
 * each its key of `key_bits` and then the value; -1 when no entry has that key. */
static int32_t find_entry(const uint8_t* data, uint32_t base, unsigned count, unsigned entry_bits, unsigned key_bits,
                          uint32_t key)
{
    unsigned low = 0, high = count;
    while (low < high) {
        const unsigned middle = (low + high) >> 1;
        stream_t stream;
        uint32_t found;
        start(&stream, data, base + middle * entry_bits);
        found = take(&stream, key_bits);
        if (found == key)
            return (int32_t)take(&stream, entry_bits - key_bits);
        if (found < key)
            low = middle + 1;
        else
            high = middle;
    }
    return -1;
}

/* The pen adjustment between `left` and the character `right` after it. */
static int kerning(const vt_font_t* font, unsigned left, unsigned right)
{
    const uint8_t* data = font->kerning;
    const unsigned delta_bits = font->kerning_delta_bits;
    int32_t stored;
    if (!data)
        return 0;
    if (font->kerning_form == VT_KERNING_PAIRS) {
        stored = find_entry(data, 0, font->kerning_entries[0], 16 + delta_bits, 16, right << 8 | left);
    } else {
        /* The right code first: most characters have no pair to the left of them. */
        const int32_t right_class =
            find_entry(data, font->kerning_rights, font->kerning_entries[1], 8 + font->kerning_class_bits[1], 8, right);
        int32_t left_class;
        stream_t stream;
        if (right_class < 0 ||
            (left_class = find_entry(data, 0, font->kerning_entries[0], 8 + font->kerning_class_bits[0], 8, left)) < 0)
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
    const unsigned coding = (unsigned)field[VT_FIELD_CODING], bpp = font->bpp, scale = font->coverage_scale;
    const int width = field[VT_FIELD_WIDTH], height = field[VT_FIELD_HEIGHT];
    stream_t stream;
    uint32_t left = (uint32_t)width * (uint32_t)height, zeros = 0;
    unsigned value = 0;
    int column = 0, row = 0, run_due = 1;
    /* The scan's position along its line (a row, or a column with VT_CODING_COLUMNS) and across. */
    int *const along = coding & VT_CODING_COLUMNS ? &row : &column, *const across = along == &row ? &column : &row;
    const int line = along == &row ? height : width;
    start(&stream, font->pixels, (uint32_t)field[VT_FIELD_PIXELS] << font->pixel_shift);
    /* A turned pixel covers the square left of or above its corner. */
    x -= cosine + sine < 0;
    y -= sine - cosine > 0;
    while (left) {
        unsigned stored;
        uint32_t count = 1; /* pixels this step covers */
        if (coding & VT_CODING_RUNS) {
            if (run_due) {
                zeros = take_run(&stream);
                run_due = 0;
            }
            if (zeros) {
                /* A run that leaves the pixels 0 is stepped over at once. */
                if (!(coding & VT_CODING_CHANGES) || !value)
                    count = zeros < left ? zeros : left;
                zeros -= count;
                stored = 0;
            } else {
                stored = bpp > 1 ? take(&stream, bpp) : 1;
                run_due = 1;
            }
        } else {
            stored = take(&stream, bpp);
        }
        value = coding & VT_CODING_CHANGES ? stored ^ value : stored;
        left -= count;
        if (value) {
            const int dx = field[VT_FIELD_LEFT] + column, dy = row - field[VT_FIELD_TOP];
            plot(ctx, x + cosine * dx + sine * dy, y - sine * dx + cosine * dy, (uint8_t)(value * scale));
        }
        for (*along += (int)count; *along >= line; *along -= line)
            ++*across;
    }
}

/* Draws the codes from `text` up to `end`, or up to its 0 byte when `end` is null. */
static int draw_codes(const vt_font_t* font, const uint8_t* text, const uint8_t* end, int x, int y, int rotation,
                      vt_plot_fn plot, void* ctx)
{
    /* The turn; both 0 for a rotation other than 0, 90, 180 and 270. */
    const int cosine = (rotation == 0) - (rotation == 180), sine = (rotation == 90) - (rotation == 270);
    int advance = 0, previous = -1;
    if (!cosine && !sine)
        return 0;
    for (; text != end && (end || *text); ++text) {
        const int index = find_glyph(font, *text);
        int32_t field[VT_RECORD_FIELDS];
        if (index < 0)
            continue;
        if (previous >= 0)
            advance += kerning(font, (unsigned)previous, *text);
        read_record(font, index, field);
        if (plot)
            draw_glyph(font, field, x + cosine * advance, y - sine * advance, cosine, sine, plot, ctx);
        advance += field[VT_FIELD_ADVANCE];
        previous = *text;
    }
    return advance;
}

int vt_draw_text(const vt_font_t* font, const char* text, int x, int y, int rotation, vt_plot_fn plot, void* ctx)
{
    return draw_codes(font, (const uint8_t*)text, NULL, x, y, rotation, plot, ctx);
}

int vt_draw_char(const vt_font_t* font, uint8_t code, int x, int y, int rotation, vt_plot_fn plot, void* ctx)
{
    return draw_codes(font, &code, &code + 1, x, y, rotation, plot, ctx);
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
