#!/usr/bin/env python3
"""Draws addon.ico: a bar code over a bracketed output line, in the sizes a host shows. Run it after a change."""
import os
import struct

SIZES = (16, 32, 48)
OVERSAMPLE = 4
CLEAR = (0, 0, 0, 0)
PAPER = (255, 255, 255, 255)
EDGE = (64, 96, 136, 255)
INK = (32, 32, 40, 255)
BEAM = (208, 32, 32, 255)
FIELD = (64, 128, 200, 255)

# Left edge and width of each bar, in units of a 32-unit square.
BARS = ((6, 1), (8, 2), (11, 1), (13, 3), (17, 1), (19, 1), (21, 2), (24, 2))


def colour_at(x, y):
    """Colour of a point in units of a 32-unit square."""
    if not (2 <= x < 30 and 2 <= y < 30):
        return CLEAR
    corner = min(x - 2, 30 - x) + min(y - 2, 30 - y)
    if corner < 1.5:
        return CLEAR
    if x < 3.2 or x >= 28.8 or y < 3.2 or y >= 28.8:
        return EDGE
    if 5 <= x < 27 and 11 <= y < 12.4:
        return BEAM
    if 6 <= y < 18 and any(left <= x < left + width for left, width in BARS):
        return INK
    if 20.5 <= y < 26:
        if 6 <= x < 12 or 13.5 <= x < 18.5 or 20 <= x < 26:
            return FIELD
    return PAPER


def picture(size):
    """Rows of RGBA pixels, averaged over OVERSAMPLE squared points each."""
    rows = []
    step = 32.0 / (size * OVERSAMPLE)
    for row in range(size):
        line = []
        for column in range(size):
            total = [0, 0, 0, 0]
            for dy in range(OVERSAMPLE):
                for dx in range(OVERSAMPLE):
                    x = (column * OVERSAMPLE + dx + 0.5) * step
                    y = (row * OVERSAMPLE + dy + 0.5) * step
                    red, green, blue, alpha = colour_at(x, y)
                    total = [total[0] + red * alpha, total[1] + green * alpha, total[2] + blue * alpha,
                             total[3] + alpha]
            alpha = total[3]
            rgb = [round(part / alpha) if alpha else 0 for part in total[:3]]
            line.append((*rgb, round(alpha / OVERSAMPLE ** 2)))
        rows.append(line)
    return rows


def icon_image(size):
    """A device-independent bitmap with alpha and a mask, as icons store it: bottom row first."""
    rows = picture(size)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    colours = b"".join(bytes((b, g, r, a)) for row in reversed(rows) for r, g, b, a in row)
    stride = (size + 31) // 32 * 4
    mask = b""
    for row in reversed(rows):
        bits = 0
        for _, _, _, alpha in row:
            bits = bits << 1 | (alpha < 128)
        mask += (bits << (stride * 8 - size)).to_bytes(stride, "big")
    return header + colours + mask


def main():
    images = [icon_image(size) for size in SIZES]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, image in zip(SIZES, images):
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    target = os.path.join(os.path.dirname(os.path.abspath(__file__)), "addon.ico")
    with open(target, "wb") as file:
        file.write(directory + b"".join(images))


if __name__ == "__main__":
    main()
