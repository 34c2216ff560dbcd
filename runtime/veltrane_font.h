/* Veltrane packed bitmap fonts: the format veltrane-fontgen-export --format packed writes,
 * and the functions that draw it. C99; no allocation, no floating point, no library calls,
 * reentrant.
 *
 * Drawing: (x, y) is the pen on the baseline, y grows downwards. For the pixel in column
 * col and row row of a glyph as rendered, with dx = xoff + col and dy = row - yoff (xoff
 * from the pen to the glyph's left column, yoff from the baseline up to its top row), the
 * plot lands at
 *   rotation   0: (x + dx,     y + dy)       the pen moves +x
 *   rotation  90: (x + dy,     y - dx - 1)   the pen moves -y
 *   rotation 180: (x - dx - 1, y - dy - 1)   the pen moves -x
 *   rotation 270: (x - dy - 1, y + dx)       the pen moves +y
 * plot is called once for every stored pixel that is not 0, with its coverage 1 to 255.
 */
#ifndef VELTRANE_FONT_H
#define VELTRANE_FONT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The fields of a glyph record, in the order they are packed. */
enum
{
    VT_FIELD_WIDTH,   /* stored columns */
    VT_FIELD_HEIGHT,  /* stored rows */
    VT_FIELD_LEFT,    /* pen to the first stored column, positive right */
    VT_FIELD_TOP,     /* baseline up to the first stored row, positive up */
    VT_FIELD_ADVANCE, /* pen movement after the glyph */
    VT_FIELD_PIXELS,  /* where the glyph's pixels start in `pixels`: bit position >> pixel_shift */
    VT_FIELD_CODING,  /* VT_CODING_* flags of the glyph's pixels */
    VT_RECORD_FIELDS
};

/* How a glyph's pixels are stored. Without VT_CODING_RUNS or VT_CODING_MODEL each is a
 * value of bpp bits; with VT_CODING_RUNS, a zero run (Elias gamma of its length + 1) comes
 * before each value that is not 0 (bpp bits, none at 1 bit), and a last zero run may end
 * the glyph. With VT_CODING_CHANGES a value is the exclusive or of the pixel and the one
 * before it. VT_CODING_MODEL codes the pixels arithmetically with the font's model: see
 * `model` below. */
enum
{
    VT_CODING_RUNS = 1,    /* zero runs and values, as above */
    VT_CODING_COLUMNS = 2, /* column by column from the left, each from the top; else row by row */
    VT_CODING_CHANGES = 4, /* each value XOR the previous pixel's */
    VT_CODING_MODEL = 8    /* each pixel predicted from the ones decoded before it */
};

/* The pixels before the first of a line that a model's window may reach: lines of the
 * model coding hold at most 32 - VT_MODEL_MARGIN pixels. */
#define VT_MODEL_MARGIN 4

/* How vt_draw_text reads a text: as UTF-8, each character a code point, or each byte a code. */
enum
{
    VT_KEYS_BYTES,  /* the codes are bytes of an 8-bit codepage */
    VT_KEYS_UNICODE /* the codes are Unicode code points, texts UTF-8 */
};

/* The fields of a block of codes, in the order they are packed. A block covers the codes
 * from its first to first + last; its glyphs follow each other in the records from glyph
 * on. Without a bitmap every code of the block has a glyph; with one, bit i of the bitmap
 * (at bit position `bitmap` of `blocks`) tells whether code first + i has one, and its
 * glyph comes after those of the set bits before it. */
enum
{
    VT_BLOCK_FIRST,
    VT_BLOCK_LAST,
    VT_BLOCK_GLYPH,
    VT_BLOCK_BITMAP, /* 0: no bitmap */
    VT_BLOCK_FIELDS
};

enum
{
    VT_KERNING_NONE,
    /* kerning_entries[0] pairs of right glyph, left glyph (glyph_bits each, their indexes
     * in the records) and a delta, sorted by right glyph, then left glyph */
    VT_KERNING_PAIRS,
    /* kerning_entries[0] left glyphs with their class, from bit kerning_rights
     * kerning_entries[1] right glyphs with theirs (each list sorted by glyph: glyph_bits,
     * then kerning_class_bits[]), from bit kerning_deltas a delta for each left class
     * times kerning_columns right classes */
    VT_KERNING_CLASSES
};

/* A packed font. Every array is a stream of bits, most significant bit first. A glyph
 * record holds field_bits[f] bits (at most 24) for each field f, the value less
 * field_min[f]; a block holds block_field_bits[f] bits for each field f; a kerning delta
 * holds kerning_delta_bits bits, the delta less kerning_delta_min. Glyphs are in code
 * order. */
typedef struct vt_font
{
    /* Bytes first, then halves, then words: on a Cortex-M0 each loads from a short offset. */
    uint8_t bpp;            /* bits of a stored pixel: 1, 2, 4 or 8 */
    uint8_t coverage_scale; /* 255 / (2^bpp - 1) */
    uint8_t record_bits;
    uint8_t pixel_shift; /* 0, or more where the pixels take more than 2^24 bits */
    uint8_t field_bits[VT_RECORD_FIELDS];
    uint8_t keys; /* VT_KEYS_* */
    uint8_t block_bits;
    uint8_t block_field_bits[VT_BLOCK_FIELDS];
    uint8_t glyph_bits;   /* of a glyph's index in the kerning data */
    uint8_t kerning_form; /* VT_KERNING_* */
    uint8_t kerning_class_bits[2];
    uint8_t kerning_delta_bits;
    int8_t kerning_delta_min;
    uint8_t model_bits;       /* of a context: the sum of model_width */
    uint8_t model_width[3];   /* of the model's window on the line, the line before, the one before that */
    uint8_t model_shift[3];   /* VT_MODEL_MARGIN less how far back each window starts */
    uint8_t model_value_bits; /* kept of each neighbour's value for a pixel's value */
    int16_t height;           /* baseline to baseline */
    int16_t ascender;
    int16_t descender; /* negative below the baseline */
    int16_t field_min[VT_RECORD_FIELDS];
    uint16_t kerning_columns;
    uint32_t block_count;
    uint32_t kerning_entries[2];
    const uint8_t* records; /* a record for each glyph, record_bits apart */
    const uint8_t* pixels;
    const uint8_t* blocks; /* the blocks, block_bits apart, sorted by first code; then bitmaps */
    const uint8_t* kerning;
    uint32_t kerning_rights; /* bit position of the right glyphs' list (classes) */
    uint32_t kerning_deltas; /* bit position of the deltas (classes) */
    /* The model of VT_CODING_MODEL, or NULL. Its glyphs are scanned as VT_CODING_COLUMNS
     * says, a line at a time. A pixel's context is model_bits bits: for the line being
     * decoded, the one before and the one before that, in this order from the top bits
     * down, model_width[i] bits of that line from the pixel at model_shift[i] -
     * VT_MODEL_MARGIN along from this one onwards, the first pixel the lowest bit; a bit is
     * 1 for a pixel that is not 0, 0 for one off the glyph. With n = 2^model_bits, model[c]
     * is the chance / 256 (0: none) that the pixel of context c is 0. Beyond 1 bit a pixel,
     * the value of a pixel not 0 then comes bit by bit from the top, with the chance of a 0
     * bit at model[n + (v << bpp) + t]: t is 1 followed by the value's bits so far, and v
     * the top model_value_bits bits of the value of the pixel before on the line, followed
     * by those of the pixel on the line before (0 off the glyph). The arithmetic decoder's
     * range starts at 2^32 - 1 and its code as the 32 bits from the glyph's start; for each
     * bit it takes bound = (range >> 8) * chance, 0 when code < bound (range = bound), else
     * 1 (code and range less bound), and while range < 2^24, shifts both left by 8 and takes
     * the next 8 bits into code. */
    const uint8_t* model;
} vt_font_t;

typedef void (*vt_plot_fn)(void* ctx, int x, int y, uint8_t coverage);

/* Draws one character with the pen at (x, y); returns its advance, or 0 for a code the
 * font lacks or a rotation other than 0, 90, 180 and 270. */
int vt_draw_char(const vt_font_t* font, uint32_t code, int x, int y, int rotation, vt_plot_fn plot, void* ctx);
/* Draws a text up to its 0 byte, kerned: UTF-8 for a font of VT_KEYS_UNICODE, each byte a
 * code for one of VT_KEYS_BYTES. Skips codes the font lacks and, in UTF-8, each byte that
 * does not start a well-formed sequence (then decoding goes on at the next byte); the
 * characters drawn either side of what is skipped kern as neighbours. Returns the advance
 * of the whole text, or 0 for a rotation other than 0, 90, 180 and 270. */
int vt_draw_text(const vt_font_t* font, const char* text, int x, int y, int rotation, vt_plot_fn plot, void* ctx);
/* The advance vt_draw_text gives the text, without drawing. */
int vt_text_width(const vt_font_t* font, const char* text);

int vt_font_height(const vt_font_t* font);
int vt_font_ascender(const vt_font_t* font);
int vt_font_descender(const vt_font_t* font);

#ifdef __cplusplus
}
#endif

#endif
