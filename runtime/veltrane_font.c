/* Draws the packed fonts veltrane_font.h describes, straight from their bit streams. */
#include "veltrane_font.h"

/* The next `count` bits (at most 32) at bit *pos, most significant first. */
static uint32_t read_bits(const uint8_t *data, uint32_t *pos, unsigned count)
{
    uint32_t value = 0;
    while (count--) {
        value = value << 1 | ((data[*pos >> 3] >> (7 - (*pos & 7))) & 1u);
        ++*pos;
    }
    return value;
}

/* A length as Elias gamma codes it: the bits of length + 1 after as many zeros less one. */
static uint32_t read_run(const uint8_t *data, uint32_t *pos)
{
    unsigned zeros = 0;
    while (!read_bits(data, pos, 1))
        ++zeros;
    return ((1u << zeros) | read_bits(data, pos, zeros)) - 1;
}

/* The glyph's index in the records, or -1 for a code the font lacks. */
static int find_glyph(const vt_font_t *font, unsigned code)
{
    const uint8_t *range = font->ranges;
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

static void read_record(const vt_font_t *font, int index, int32_t *field)
{
    uint32_t pos = (uint32_t)index * font->record_bits;
    int f;
    for (f = 0; f < VT_RECORD_FIELDS; ++f)
        field[f] = (int32_t)read_bits(font->records, &pos, font->field_bits[f]) + font->field_min[f];
}

/* Looks up `key` in `count` sorted entries `entry_bits` apart from bit `base`, each
 * starting with its key of `key_bits`; on a match *pos is the bit after that key. */
static int find_entry(const uint8_t *data, uint32_t base, unsigned count, unsigned entry_bits, unsigned key_bits,
                      uint32_t key, uint32_t *pos)
{
    unsigned low = 0, high = count;
    while (low < high) {
        unsigned middle = (low + high) >> 1;
        uint32_t found;
        *pos = base + middle * entry_bits;
        found = read_bits(data, pos, key_bits);
        if (found == key)
            return 1;
        if (found < key)
            low = middle + 1;
        else
            high = middle;
    }
    return 0;
}

/* The pen adjustment between `left` and the character `right` after it. */
static int kerning(const vt_font_t *font, unsigned left, unsigned right)
{
    const uint8_t *data = font->kerning;
    const unsigned delta_bits = font->kerning_delta_bits;
    uint32_t pos;
    if (font->kerning_form == VT_KERNING_PAIRS) {
        if (!find_entry(data, 0, font->kerning_entries[0], 16 + delta_bits, 16, right << 8 | left, &pos))
            return 0;
    } else if (font->kerning_form == VT_KERNING_CLASSES) {
        const unsigned left_bits = font->kerning_class_bits[0], right_bits = font->kerning_class_bits[1];
        uint32_t right_pos, left_class;
        if (!find_entry(data, 0, font->kerning_entries[0], 8 + left_bits, 8, left, &pos) ||
            !find_entry(data, font->kerning_rights, font->kerning_entries[1], 8 + right_bits, 8, right, &right_pos))
            return 0;
        left_class = read_bits(data, &pos, left_bits);
        pos = font->kerning_deltas + (left_class * font->kerning_columns + read_bits(data, &right_pos, right_bits)) * delta_bits;
    } else {
        return 0;
    }
    return (int)read_bits(data, &pos, delta_bits) + font->kerning_delta_min;
}

/* Plots the glyph of `field` with the pen at (x, y), turned by (cosine, sine). */
static void draw_glyph(const vt_font_t *font, const int32_t *field, int x, int y, int cosine, int sine,
                       vt_plot_fn plot, void *ctx)
{
    const unsigned coding = (unsigned)field[VT_FIELD_CODING], bpp = font->bpp;
    const int width = field[VT_FIELD_WIDTH], height = field[VT_FIELD_HEIGHT];
    uint32_t pos = (uint32_t)field[VT_FIELD_PIXELS], left = (uint32_t)width * (uint32_t)height, zeros = 0;
    unsigned value = 0;
    int column = 0, row = 0, run_due = 1;
    /* A turned pixel covers the square left of or above its corner. */
    x -= cosine < 0 || sine < 0;
    y -= cosine < 0 || sine > 0;
    while (left--) {
        unsigned stored;
        if (coding & VT_CODING_RUNS) {
            if (run_due) {
                zeros = read_run(font->pixels, &pos);
                run_due = 0;
            }
            if (zeros) {
                --zeros;
                stored = 0;
            } else {
                stored = bpp > 1 ? read_bits(font->pixels, &pos, bpp) : 1;
                run_due = 1;
            }
        } else {
            stored = read_bits(font->pixels, &pos, bpp);
        }
        value = coding & VT_CODING_CHANGES ? stored ^ value : stored;
        if (value) {
            const int dx = field[VT_FIELD_LEFT] + column, dy = row - field[VT_FIELD_TOP];
            plot(ctx, x + cosine * dx + sine * dy, y - sine * dx + cosine * dy,
                 (uint8_t)(value * font->coverage_scale));
        }
        if (coding & VT_CODING_COLUMNS) {
            if (++row == height) {
                row = 0;
                ++column;
            }
        } else if (++column == width) {
            column = 0;
            ++row;
        }
    }
}

/* 0 to 3 for 0, 90, 180 and 270; -1 for any other rotation. */
static int quarter_turns(int rotation)
{
    int quarter;
    for (quarter = 0; quarter < 4; ++quarter)
        if (rotation == quarter * 90)
            return quarter;
    return -1;
}

/* Draws the codes from `text` up to `end`, or up to its 0 byte when `end` is null. */
static int draw_codes(const vt_font_t *font, const uint8_t *text, const uint8_t *end, int x, int y, int rotation,
                      vt_plot_fn plot, void *ctx)
{
    const int quarter = quarter_turns(rotation);
    const int cosine = (quarter == 0) - (quarter == 2), sine = (quarter == 1) - (quarter == 3);
    int advance = 0, previous = -1;
    if (quarter < 0)
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

int vt_draw_text(const vt_font_t *font, const char *text, int x, int y, int rotation, vt_plot_fn plot, void *ctx)
{
    return draw_codes(font, (const uint8_t *)text, NULL, x, y, rotation, plot, ctx);
}

int vt_draw_char(const vt_font_t *font, uint8_t code, int x, int y, int rotation, vt_plot_fn plot, void *ctx)
{
    return draw_codes(font, &code, &code + 1, x, y, rotation, plot, ctx);
}

int vt_text_width(const vt_font_t *font, const char *text)
{
    return vt_draw_text(font, text, 0, 0, 0, NULL, NULL);
}

int vt_font_height(const vt_font_t *font)
{
    return font->height;
}

int vt_font_ascender(const vt_font_t *font)
{
    return font->ascender;
}

int vt_font_descender(const vt_font_t *font)
{
    return font->descender;
}
