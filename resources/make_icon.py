#!/usr/bin/env python3
"""Draws the program's window icon: an amber dot-matrix "A" on a rounded slate tile.

Writes a 128x128 RGBA PNG with nothing but the standard library, so the icon can be
re-made on any machine:  python3 resources/make_icon.py resources/icon.png
"""
import struct
import sys
import zlib

SIZE = 128
TILE_MARGIN = 4          # transparent border around the tile
TILE_RADIUS = 22         # corner radius of the tile
SUPERSAMPLE = 4          # samples per axis for the tile's soft edge

# A 5x7 dot-matrix letter, the kind of glyph the tool produces for small displays.
GLYPH = [
    ".###.",
    "#...#",
    "#...#",
    "#####",
    "#...#",
    "#...#",
    "#...#",
]
CELL = 14                # one glyph pixel, gap included
DOT = 12                 # the lit square inside a cell

TILE_TOP = (52, 64, 84)
TILE_BOTTOM = (24, 30, 42)
DOT_ON = (255, 186, 58)
DOT_OFF_ALPHA = 0.13     # unlit dots glow faintly, like an LCD's grid


def tile_coverage(x, y):
    """Share of the pixel (x, y) that lies inside the rounded tile, 0.0 to 1.0."""
    lo, hi = TILE_MARGIN, SIZE - TILE_MARGIN
    inside = 0
    for sy in range(SUPERSAMPLE):
        for sx in range(SUPERSAMPLE):
            px = x + (sx + 0.5) / SUPERSAMPLE
            py = y + (sy + 0.5) / SUPERSAMPLE
            if not (lo <= px <= hi and lo <= py <= hi):
                continue
            # Distance to the nearest corner centre decides inside the corner squares.
            cx = min(max(px, lo + TILE_RADIUS), hi - TILE_RADIUS)
            cy = min(max(py, lo + TILE_RADIUS), hi - TILE_RADIUS)
            if (px - cx) ** 2 + (py - cy) ** 2 <= TILE_RADIUS ** 2:
                inside += 1
    return inside / (SUPERSAMPLE * SUPERSAMPLE)


def mix(a, b, t):
    return tuple(round(a[i] + (b[i] - a[i]) * t) for i in range(3))


def dot_at(x, y):
    """None outside the dot grid, else whether the glyph lights the dot under (x, y)."""
    width, height = len(GLYPH[0]) * CELL, len(GLYPH) * CELL
    left, top = (SIZE - width) // 2, (SIZE - height) // 2
    gx, gy = x - left, y - top
    if not (0 <= gx < width and 0 <= gy < height):
        return None
    if gx % CELL >= DOT or gy % CELL >= DOT:
        return None
    return GLYPH[gy // CELL][gx // CELL] == "#"


def pixel(x, y):
    coverage = tile_coverage(x, y)
    if coverage == 0.0:
        return (0, 0, 0, 0)
    colour = mix(TILE_TOP, TILE_BOTTOM, y / (SIZE - 1))
    lit = dot_at(x, y)
    if lit is True:
        colour = DOT_ON
    elif lit is False:
        colour = mix(colour, DOT_ON, DOT_OFF_ALPHA)
    return colour + (round(255 * coverage),)


def png_chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


def encode_png(rows):
    raw = b"".join(b"\x00" + bytes(v for px in row for v in px) for row in rows)
    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0)  # 8-bit RGBA
    return (b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", header)
            + png_chunk(b"IDAT", zlib.compress(raw, 9)) + png_chunk(b"IEND", b""))


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_icon.py OUTPUT.png")
    rows = [[pixel(x, y) for x in range(SIZE)] for y in range(SIZE)]
    with open(sys.argv[1], "wb") as out:
        out.write(encode_png(rows))


if __name__ == "__main__":
    main()
