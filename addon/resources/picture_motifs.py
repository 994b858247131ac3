"""Parts that the pictures share, so that a family looks like one."""
import math

from picture_canvas import AMBER, BLUE, GLYPH_CELL, GLYPHS, PAPER, SLATE


class Drawings(dict):
    def enter(self, draw):
        """Enters a drawing under its function's name, which is the picture's."""
        self[draw.__name__] = draw
        return draw


# Left edge and width of each bar. Even numbers stay sharp at 16 pixels.
BARS = ((0, 4), (6, 2), (10, 2), (14, 4), (20, 2), (24, 4))
FEW_BARS = ((0, 2), (4, 4), (10, 2), (14, 2))


def bars(c, x=2, y=4, height=24, pattern=BARS, colour=SLATE):
    for left, width in pattern:
        c.rect(x + left, y, width, height, colour)


def cross(c, x, y, size, colour=AMBER, weight=4):
    c.line(x, y, x + size, y + size, colour, weight)
    c.line(x, y + size, x + size, y, colour, weight)


def check(c, x, y, colour=BLUE, weight=4):
    """A check mark twelve wide and nine high, from its left end."""
    c.path((x, y + 5), (x + 4, y + 9), (x + 12, y + 1), colour=colour, weight=weight)


def plate(c, digits, colour=BLUE):
    """The window of a counter, across the lower half."""
    c.rect(4, 18, 26, 14, colour)
    c.text(digits, 6, 20, PAPER)


def counter(c):
    plate(c, "123")


def lifetime(c):
    """A counter that nobody resets from one object to the next."""
    plate(c, "999", SLATE)


def bit_row(c, bits, y=20, colour=BLUE):
    """Cells of a mask, filled where the bit is set."""
    for index, bit in enumerate(bits):
        c.frame(index * 8, y, 8 if index == len(bits) - 1 else 10, 10, SLATE, colour if bit == "1" else PAPER)


def ruler(c, y=20):
    c.frame(0, y, 32, 12, AMBER)
    for index, x in enumerate(range(4, 28, 4)):
        c.rect(x, y + 2, 2, 6 if index % 2 else 4, AMBER)


def parcel(c, x, y, width, height):
    c.frame(x, y, width, height)
    c.rect(x + width // 4 * 2 - 2, y, 4, height // 2, AMBER)


def scanner(c, x=16, y=2):
    """A reading head that looks down, round x."""
    c.rect(x - 8, y, 16, 6)
    c.polygon((x - 4, y + 6), (x + 4, y + 6), (x + 10, y + 14), (x - 10, y + 14), colour=AMBER)


def selector(c, y=22):
    """One choice out of three."""
    for index in range(3):
        c.ring(6 + 10 * index, y + 4, 4, SLATE, AMBER if index == 1 else PAPER)


def clock(c, x, y, radius, *hands):
    c.ring(x, y, radius, SLATE, PAPER)
    for to_x, to_y, colour in hands:
        c.line(x, y, to_x, to_y, colour)


def leaf(c, letter):
    """A calendar's leaf."""
    c.frame(2, 4, 28, 28)
    c.rect(2, 4, 28, 8, BLUE)
    for x in (8, 22):
        c.rect(x, 0, 2, 8, SLATE)
    c.text([letter], 16 - len(GLYPHS[letter][0]) // 2 * GLYPH_CELL, 16)


def arrow(c, x1, x2, y, colour=BLUE, weight=2, head=4):
    """A horizontal arrow whose point is just past x2."""
    back = head if x2 < x1 else -head
    c.line(x1, y, x2, y, colour, weight)
    c.polygon((x2 - back / 4, y), (x2 + back, y - head - 0.5), (x2 + back, y + head + 0.5), colour=colour)


def sigma(c, x, y, width, height, weight=2):
    middle = y + height / 2
    c.path((x + width, y), (x, y), (x + width / 2, middle), (x, y + height), (x + width, y + height), weight=weight)


def pulse(c, y, height):
    """A diagnostic trace across the picture; y is its resting line."""
    c.path((1, y), (7, y), (11, y - height), (19, y + height / 2), (23, y), (31, y), colour=AMBER)


def partial(c, x, y, radius=7):
    """A part of a whole."""
    c.ring(x, y, radius, SLATE, PAPER)
    c.sector(x, y, radius, 0, 90, AMBER)


def star(c, x, y, radius, colour=AMBER):
    turns = [(math.radians(36 * step), radius if step % 2 == 0 else radius * 0.45) for step in range(10)]
    c.polygon(*((x + length * math.sin(turn), y - length * math.cos(turn)) for turn, length in turns), colour=colour)
