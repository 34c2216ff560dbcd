#!/usr/bin/python3
"""Writes the seeds of the font_export fuzz target (committed; rerun only to change them).

Two small faces cover the two ways FreeType delivers glyphs: the tests' own outline font,
and a few glyphs of Terminus's 12 px strike, a bitmap-only face with 1-bit glyphs.
Needs python3-fonttools and fonts-terminus-otb.
"""
import shutil
from pathlib import Path

from fontTools import subset
from fontTools.ttLib import TTFont

HERE = Path(__file__).resolve().parent
SEEDS = HERE / "corpus" / "font_export"
TERMINUS = "/usr/share/fonts/opentype/terminus/terminus-normal.otb"


def terminus_strike(ppem, text):
    font = TTFont(TERMINUS)
    keep = [i for i, s in enumerate(font["EBLC"].strikes) if s.bitmapSizeTable.ppemY == ppem]
    font["EBLC"].strikes = [font["EBLC"].strikes[i] for i in keep]
    font["EBDT"].strikeData = [font["EBDT"].strikeData[i] for i in keep]
    # The outline tables are empty in a bitmap-only face and trip the subsetter.
    for tag in ("BDF ", "FFTM", "glyf", "loca"):
        del font[tag]
    options = subset.Options()
    options.notdef_outline = False
    options.name_IDs = []
    options.layout_features = []
    subsetter = subset.Subsetter(options)
    subsetter.populate(unicodes=[ord(c) for c in text])
    subsetter.subset(font)
    return font


def main():
    SEEDS.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(HERE.parent / "fonts" / "veltrane-test.ttf", SEEDS / "veltrane_test.ttf")
    terminus_strike(12, "AVTaj. ").save(SEEDS / "terminus_12px.otb")


if __name__ == "__main__":
    main()
