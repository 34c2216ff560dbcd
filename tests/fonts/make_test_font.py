#!/usr/bin/python3
"""Regenerates the tests' own TrueType fonts: tests/fonts/veltrane-test.ttf, one without GPOS,
veltrane-test-icons.ttf, a second font to merge into exports of the first (see ICON_GLYPHS),
and veltrane-test-crowds.ttf, whose kerning tells apart glyphs that no lookup names (see
CROWD_GLYPHS).

Needs Debian's python3-fonttools (fontTools.fontBuilder); `make test-font` installs it
when missing and runs this script. The .ttf is committed, so the build never runs it.

Every outline is made of axis-aligned rectangles on a 64-unit grid with
unitsPerEm 1024, so at 16 px one pixel is exactly 64 units and at 32 px every 16 px
pixel becomes a 2x2 block. The font has no instructions (FreeType then uses its
auto-hinter for FT_LOAD_DEFAULT, which leaves grid-aligned edges alone): rendered
with FT_LOAD_DEFAULT + FT_RENDER_MODE_NORMAL every pixel is exactly 0x00 or 0xFF.

Values measured with Debian 12's FreeType 2.12.1 (FT_Set_Pixel_Sizes(face, 0, px),
FT_LOAD_DEFAULT, FT_RENDER_MODE_NORMAL); the tests rely on them.

Glyph index, code, and the rendered glyph at 16 px (32 px: every value doubled,
every pixel a 2x2 block). "#" is 0xFF, "." is 0x00; pitch equals width.

  index glyph   code    width rows left top advance  pixels (top row first)
  0     .notdef -       6     10   1    10  8        ######  then 8 x #....#  then ######
  1     space   U+0020  0     0    0    0   4        (no bitmap, buffer null)
  2     period  U+002E  2     2    1    2   4        ## / ##
  3     A       U+0041  8     8    1    8   10       8 rows of ########
  4     T       U+0054  8     11   0    11  9        2 x ######## then 9 x ...##...
  5     V       U+0056  6     8    0    10  7        8 x ##..##   (bottom row 2 px above the baseline)
  6     j       U+006A  4     12   -2   8   4        12 x ####    (ink 2 px left of the pen, 4 below the baseline)
  7     eacute  U+00E9  4     10   1    10  6        .##. / .##. / .... / .... / 6 x ####

A code the font lacks (e.g. U+25A0, 'B', 'a') renders glyph 0. advance.y is 0 throughout.
Other sizes are not grid-aligned and give grey edges (e.g. 12, 24, 25, 36 px).

Line metrics (font units: ascender 832, descender -288, lineGap 0, in hhea and OS/2
alike). FreeType grid-fits the size metrics (ascender up, descender down, height
rounded), so they are whole pixels in 26.6:

  px   ascender  descender  height   height >> 6
  12   640       -256       832      13
  16   832       -320       1152     18     (descender -4.5 px floored to -5)
  24   1280      -448       1664     26
  32   1664      -576       2240     35
  36   1920      -704       2496     39

Kerning ('kern' format 0, font units) and FT_Get_Kerning in 26.6. FT_KERNING_DEFAULT
scales the value down below 25 ppem and rounds it to whole pixels, so a wrapper in
whole pixels sees DEFAULT >> 6; UNFITTED shows the plain scaled value:

  pair       units   12 px        16 px         24 px        32 px        36 px
                     def  unfit   def  unfit    def  unfit   def  unfit   def  unfit
  A V        -128    -64  -96     -64  -128     -192 -192    -256 -256    -256 -288
  V A        -192    -64  -144    -128 -192     -256 -288    -384 -384    -448 -432
  A T        -65     0    -49     -64  -65      -64  -98     -128 -130    -128 -146
  V period   +96     64   72      64   96       128  144     192  192     192  216
  eacute V   -128    -64  -96     -64  -128     -192 -192    -256 -256    -256 -288

So at 16 px in whole pixels: A V -1, V A -2, A T -1 (UNFITTED >> 6 would give -2),
V . +1, eacute V -1 (only when looked up as U+00E9; 0xE9 sign-extended names no glyph
and gives 0). Every other pair, including any pair with glyph 0, gives (0, 0).

GPOS_KERN: kerning unlike the legacy table's, clamped, in context, at 16 ppem, beside ligatures and dist.
"""

import sys
from pathlib import Path

from fontTools.feaLib.builder import addOpenTypeFeaturesFromString
from fontTools.fontBuilder import FontBuilder
from fontTools.otlLib.builder import buildCoverage
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib.tables._k_e_r_n import KernTable_format_0
from fontTools.ttLib import newTable
from fontTools.ttLib.tables import otTables
from fontTools.misc.timeTools import timestampFromString

UNITS_PER_EM = 1024
PX = 64  # font units per pixel at 16 px

# Line metrics in font units (hhea and OS/2 alike). The descender is -4.5 px at
# 16 px, which FreeType's grid-fitted size metrics turn into -5 px (-320 in 26.6).
ASCENDER = 832
DESCENDER = -288
LINE_GAP = 0

# name: (code point or None, advance in px, [(x0, y0, x1, y1, is_hole)] in px at 16 px,
#        y up from the baseline). Holes run the other way round so that they stay empty.
GLYPHS = {
    ".notdef": (None, 8, [(1, 0, 7, 10, False), (2, 1, 6, 9, True)]),  # hollow box
    "space": (0x20, 4, []),                                             # no contours
    "period": (0x2E, 4, [(1, 0, 3, 2, False)]),                         # 2x2 dot
    "A": (0x41, 10, [(1, 0, 9, 8, False)]),                             # 8x8 square
    "T": (0x54, 9, [(0, 9, 8, 11, False), (3, 0, 5, 9, False)]),        # bar on a stem
    "V": (0x56, 7, [(0, 2, 2, 10, False), (4, 2, 6, 10, False)]),       # two bars, raised
    "j": (0x6A, 4, [(-2, -4, 2, 8, False)]),                            # ink left of the pen
    "eacute": (0xE9, 6, [(1, 0, 5, 6, False), (2, 8, 4, 10, False)]),   # block and accent
}

# Legacy 'kern' pairs (format 0) in font units; "eacute" V lets a test see that a
# character >= 128 passed as a signed char is not looked up.
KERN_PAIRS = {
    ("A", "V"): -128,
    ("V", "A"): -192,
    ("A", "T"): -65,
    ("V", "period"): 96,
    ("eacute", "V"): -128,
}

# The second font: two icons in the private use area that kern with each other, a "B" the
# first font lacks (a fallback finds it there) and an "A" unlike the first font's, which kerns
# with that "B": a merged export must take neither that "A" nor that pair.
ICON_GLYPHS = {
    ".notdef": (None, 8, [(1, 0, 7, 10, False), (2, 1, 6, 9, True)]),
    "battery": (0xE000, 8, [(0, 0, 7, 4, False), (7, 1, 8, 3, False)]),  # body and terminal
    "bell": (0xE001, 6, [(1, 0, 5, 6, False)]),
    "A": (0x41, 4, [(0, 0, 4, 2, False)]),
    "B": (0x42, 6, [(1, 0, 3, 8, False)]),
}
ICON_KERN_PAIRS = {
    ("battery", "bell"): -64,
    ("A", "B"): -128,
}

# The third font: glyphs no lookup names that kerning nonetheless tells apart, each from the
# one before it in code order. "k" against "m": a class-based rule after A matches any glyph
# of class 0, and k has a class no rule names. "m" against "n": that rule calls a pair
# adjustment for "A n" that no feature names. "m" against "p", a GDEF ligature the rule
# skips. "m" against "mu": the period moves after Latin only. "plus" against "equal", which
# composes with the combining solidus into "notequal"; the solidus moves by itself.
CROWD_GLYPHS = {
    ".notdef": (None, 8, [(1, 0, 7, 10, False), (2, 1, 6, 9, True)]),
    "plus": (0x2B, 6, [(0, 3, 6, 5, False), (2, 1, 4, 7, False)]),
    "period": (0x2E, 4, [(1, 0, 3, 2, False)]),
    "equal": (0x3D, 6, [(0, 2, 6, 3, False), (0, 5, 6, 6, False)]),
    "A": (0x41, 10, [(1, 0, 9, 8, False)]),
    "k": (0x6B, 6, [(1, 0, 2, 10, False), (3, 0, 5, 6, False)]),
    "m": (0x6D, 8, [(1, 0, 7, 6, False)]),
    "n": (0x6E, 6, [(1, 0, 5, 6, False)]),
    "p": (0x70, 6, [(1, -3, 5, 6, False)]),
    "uni0338": (0x338, 0, [(-4, 0, -2, 8, False)]),
    "mu": (0x3BC, 6, [(1, -3, 5, 6, False)]),
    "notequal": (0x2260, 6, [(0, 2, 6, 3, False), (0, 5, 6, 6, False), (2, 0, 4, 8, False)]),
}
CROWD_FEATURES = """languagesystem DFLT dflt; languagesystem latn dflt; languagesystem grek dflt;
table GDEF { GlyphClassDef [plus period equal A k m n mu notequal], [p], [uni0338], ; } GDEF;
lookup SELF { pos A <0 0 -64 0>; } SELF;
lookup NEXT_N { pos A n -64; } NEXT_N;
lookup CONTEXT { lookupflag IgnoreLigatures; pos A' lookup SELF lookup NEXT_N k; } CONTEXT;
lookup SOLIDUS { pos uni0338 <-64 0 0 0>; } SOLIDUS;
lookup PERIOD { pos period <-64 0 -64 0>; } PERIOD;
feature kern { lookup CONTEXT; lookup SOLIDUS; script latn; lookup PERIOD; } kern;"""


def class_def(classes):
    table = otTables.ClassDef()
    table.classDefs = dict(classes)
    return table


def build_crowd_font():
    font = build_font(CROWD_GLYPHS, {}, "Veltrane Test Crowds")
    del font["kern"]
    addOpenTypeFeaturesFromString(font, CROWD_FEATURES)
    # The rule after A as feaLib writes it names k in its look-ahead; make it class-based,
    # with look-ahead class 0 and k in class 1, which no rule names.
    lookup = next(l for l in font["GPOS"].table.LookupList.Lookup if l.LookupType == 8)
    records = lookup.SubTable[0].PosLookupRecord
    rule = otTables.ChainPosClassRule()
    rule.Backtrack, rule.Input, rule.LookAhead = [], [], [0]
    rule.BacktrackGlyphCount, rule.InputGlyphCount, rule.LookAheadGlyphCount = 0, 1, 1
    rule.PosLookupRecord, rule.PosCount = records, len(records)
    rules = otTables.ChainPosClassSet()
    rules.ChainPosClassRule, rules.ChainPosClassRuleCount = [rule], 1
    subtable = otTables.ChainContextPos()
    subtable.Format = 2
    subtable.Coverage = buildCoverage(["A"], font.getReverseGlyphMap())
    subtable.BacktrackClassDef = class_def({})
    subtable.InputClassDef = class_def({"A": 1})
    subtable.LookAheadClassDef = class_def({"k": 1})
    subtable.ChainPosClassSet, subtable.ChainPosClassSetCount = [None, rules], 2
    lookup.SubTable = [subtable]
    return font


GPOS_KERN = """feature kern { pos A V' <-64 0 0 0 <device 16 -2> <device NULL> <device NULL> <device NULL>>;
pos T A -192; pos V eacute -9000; pos period A 9000; pos period T -64; pos j <-64 0 -128 0>; pos T <64 0 0 0>; } kern;
feature dist { pos T period 64; pos j <64 0 0 0>; } dist; feature liga { sub T A by V; } liga;
feature clig { sub A V by T; } clig; feature calt { sub V eacute by A; } calt; feature rlig { sub period A by j; } rlig;"""


def draw_rectangles(rects):
    pen = TTGlyphPen(None)
    for x0, y0, x1, y1, hole in rects:
        corners = [(x0, y0), (x0, y1), (x1, y1), (x1, y0)]  # clockwise: filled
        if hole:
            corners.reverse()
        pen.moveTo(tuple(c * PX for c in corners[0]))
        for corner in corners[1:]:
            pen.lineTo(tuple(c * PX for c in corner))
        pen.closePath()
    return pen.glyph()


def build_font(glyphs=GLYPHS, kern_pairs=KERN_PAIRS, family="Veltrane Test"):
    names = list(glyphs)
    fb = FontBuilder(UNITS_PER_EM, isTTF=True)
    fb.setupGlyphOrder(names)
    fb.setupCharacterMap({code: name for name, (code, _, _) in glyphs.items() if code is not None})
    fb.setupGlyf({name: draw_rectangles(rects) for name, (_, _, rects) in glyphs.items()})
    metrics = {}
    for name, (_, advance, rects) in glyphs.items():
        left = min((r[0] for r in rects), default=0) * PX
        metrics[name] = (advance * PX, left)
    fb.setupHorizontalMetrics(metrics)
    fb.setupHorizontalHeader(ascent=ASCENDER, descent=DESCENDER, lineGap=LINE_GAP)
    fb.setupNameTable({"familyName": family, "styleName": "Regular"})
    fb.setupOS2(sTypoAscender=ASCENDER, sTypoDescender=DESCENDER, sTypoLineGap=LINE_GAP,
                usWinAscent=ASCENDER, usWinDescent=-DESCENDER)
    fb.setupPost()
    # Fixed time stamps keep the file byte-identical between runs.
    stamp = timestampFromString("Mon Jan  1 00:00:00 2024")
    fb.font["head"].created = stamp
    fb.font["head"].modified = stamp

    kern = newTable("kern")
    kern.version = 0
    table = KernTable_format_0()
    table.version = 0
    table.format = 0
    table.coverage = 1  # horizontal kerning
    table.kernTable = dict(kern_pairs)
    kern.kernTables = [table]
    fb.font["kern"] = kern
    return fb.font


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent
    font = build_font()
    font.save(str(folder / "veltrane-test-legacy-kern.ttf"))
    addOpenTypeFeaturesFromString(font, GPOS_KERN)
    font.save(str(folder / "veltrane-test.ttf"))
    build_font(ICON_GLYPHS, ICON_KERN_PAIRS, "Veltrane Test Icons").save(str(folder / "veltrane-test-icons.ttf"))
    build_crowd_font().save(str(folder / "veltrane-test-crowds.ttf"))


if __name__ == "__main__":
    main()
