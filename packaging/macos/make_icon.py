#!/usr/bin/env python3
"""Draws the application's icon and writes it as an icon file of macOS: make_icon.py OUTPUT

A mouse with three fingertips on a rounded square, drawn by distances to shapes, so that every size
is drawn for itself and none is scaled.
"""

import math
import struct
import sys
import zlib

# The type code that an icon file has for a PNG image of each size.
KINDS = {16: b"icp4", 32: b"icp5", 64: b"icp6", 128: b"ic07", 256: b"ic08", 512: b"ic09"}

TOP, BOTTOM = (0.29, 0.45, 0.93), (0.16, 0.25, 0.67)
BODY, TIP = (1.0, 1.0, 1.0), (0.16, 0.25, 0.67)


def rounded(x, y, width, height, radius):
    """Distance to the edge of a centred rectangle with round corners; negative inside."""
    dx, dy = abs(x) - width / 2 + radius, abs(y) - height / 2 + radius
    return math.hypot(max(dx, 0), max(dy, 0)) + min(max(dx, dy), 0) - radius


def mixed(under, over, share):
    return tuple(u + (o - u) * share for u, o in zip(under, over))


def pixel(x, y, size):
    """Colour and opacity at a point of the unit square, origin in its middle, y downward."""
    def cover(distance):
        return min(max(0.5 - distance * size, 0.0), 1.0)

    colour = mixed(TOP, BOTTOM, y + 0.5)
    colour = mixed(colour, BODY, cover(rounded(x, y - 0.04, 0.36, 0.56, 0.18)))
    for dx, dy in ((-0.1, -0.06), (0.0, -0.12), (0.1, -0.06)):
        colour = mixed(colour, TIP, cover(math.hypot(x - dx, y - dy) - 0.042))
    return colour, cover(rounded(x, y, 0.82, 0.82, 0.19))


def chunk(kind, data):
    return (struct.pack(">I", len(data)) + kind + data
            + struct.pack(">I", zlib.crc32(kind + data)))


def png(size):
    rows = bytearray()
    for j in range(size):
        rows.append(0)
        for i in range(size):
            colour, opacity = pixel((i + 0.5) / size - 0.5, (j + 0.5) / size - 0.5, size)
            rows += bytes(round(255 * c) for c in (*colour, opacity))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
            + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def icon():
    entries = b""
    for size, kind in KINDS.items():
        image = png(size)
        entries += kind + struct.pack(">I", len(image) + 8) + image
    return b"icns" + struct.pack(">I", len(entries) + 8) + entries


def main(arguments):
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    with open(arguments[0], "wb") as file:
        file.write(icon())
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
