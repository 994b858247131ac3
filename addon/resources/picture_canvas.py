"""A canvas of 32 units that is rasterised to 16 or 32 pixels without blending, and the bitmaps it is stored in.

Every shape is asked about the centre of each pixel, so edges are hard and no colour mixes with the mask. Strokes are
two units: two pixels at 32, one at 16, where they are exact when they run along odd units. A sloping stroke is measured
along its shorter axis, as pixel lines are, so that it has neither gaps nor knots at 16.
"""
import math
import struct

UNITS = 32
WEIGHT = 2
MASK = (255, 0, 255)
# Middle tones: each stands out from white, from a grey button and from a dark theme.
SLATE = (92, 108, 131)
BLUE = (36, 118, 210)
AMBER = (208, 122, 0)
PAPER = (246, 248, 251)

# Letters of three by five cells, a row to an octal digit, highest bit left; the wide ones are drawn out. A cell is two
# units, so that no letter is lower than five pixels.
GLYPHS = {letter: [f"{int(row):03b}" for row in rows] for letter, rows in zip(
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789hs?i",
    "25755 65656 34443 65556 74647 74644 34553 55755 72227 11152 55655 44447 57755 57775 25552 65644 25563 65655 "
    "34216 72222 55557 55552 55775 55255 55222 71247 75557 26227 71747 71717 55711 74717 74757 71222 75757 75717 "
    "44655 34216 61202 20222".split())}
GLYPHS["WIDE M"] = ["10001", "11011", "10101", "10001", "10001"]
GLYPHS["m"] = ["00000", "11010", "10101", "10101", "10101"]
GLYPHS["#"] = ["01010", "11111", "01010", "11111", "01010"]
GLYPH_CELL = 2


class Canvas:
    """Later shapes cover earlier ones; the colour None cuts through to the background."""

    def __init__(self, pixels):
        self.pixels = pixels
        self.rows = [[None] * pixels for _ in range(pixels)]

    def paint(self, covers, colour):
        step = UNITS / self.pixels
        for row in range(self.pixels):
            for column in range(self.pixels):
                if covers((column + 0.5) * step, (row + 0.5) * step):
                    self.rows[row][column] = colour

    def rect(self, x, y, width, height, colour=SLATE):
        self.paint(lambda px, py: x <= px < x + width and y <= py < y + height, colour)

    def frame(self, x, y, width, height, colour=SLATE, fill=PAPER):
        self.rect(x, y, width, height, colour)
        self.rect(x + WEIGHT, y + WEIGHT, width - 2 * WEIGHT, height - 2 * WEIGHT, fill)

    def line(self, x1, y1, x2, y2, colour=SLATE, weight=WEIGHT):
        if abs(x2 - x1) < abs(y2 - y1):
            self.paint(lambda px, py: self._on_line(py, px, y1, x1, y2, x2, weight), colour)
        else:
            self.paint(lambda px, py: self._on_line(px, py, x1, y1, x2, y2, weight), colour)

    @staticmethod
    def _on_line(along, across, from_along, from_across, to_along, to_across, weight):
        low, high = sorted((from_along, to_along))
        if not low - WEIGHT / 2 <= along < high + WEIGHT / 2:
            return False
        slope = (to_across - from_across) / (to_along - from_along)
        middle = from_across + slope * (along - from_along)
        return -weight / 2 <= across - middle < weight / 2

    def path(self, *points, colour=SLATE, weight=WEIGHT):
        for (x1, y1), (x2, y2) in zip(points, points[1:]):
            self.line(x1, y1, x2, y2, colour, weight)

    def disc(self, x, y, radius, colour=SLATE):
        self.paint(lambda px, py: math.hypot(px - x, py - y) < radius, colour)

    def ring(self, x, y, radius, colour=SLATE, fill=None, weight=WEIGHT):
        """The radius is the outer one; without a fill the inside stays as it is."""
        if fill:
            self.disc(x, y, radius, fill)
        self.paint(lambda px, py: radius - weight <= math.hypot(px - x, py - y) < radius, colour)

    def sector(self, x, y, radius, start, end, colour=SLATE, inner=0):
        """Part of a disc or ring; degrees from twelve o'clock, clockwise, start below end."""
        def covers(px, py):
            angle = math.degrees(math.atan2(px - x, y - py))
            inside = inner <= math.hypot(px - x, py - y) < radius
            return inside and (start <= angle < end or start <= angle + 360 < end)
        self.paint(covers, colour)

    def polygon(self, *points, colour=SLATE):
        sides = list(zip(points, points[1:] + points[:1]))

        def covers(px, py):
            inside = False
            for (x1, y1), (x2, y2) in sides:
                if (y1 > py) != (y2 > py) and px < x1 + (py - y1) * (x2 - x1) / (y2 - y1):
                    inside = not inside
            return inside
        self.paint(covers, colour)

    def text(self, letters, x, y, colour=SLATE):
        """Letters is a text or a list of glyph names."""
        for letter in letters:
            for row, cells in enumerate(GLYPHS[letter]):
                for column, cell in enumerate(cells):
                    if cell == "1":
                        self.rect(x + column * GLYPH_CELL, y + row * GLYPH_CELL, GLYPH_CELL, GLYPH_CELL, colour)
            x += (len(GLYPHS[letter][0]) + 1) * GLYPH_CELL

    def over(self, background):
        return [[pixel or background for pixel in row] for row in self.rows]


def bitmap(rows):
    """A bitmap file of 24 bits without compression: bottom row first, each padded to four bytes."""
    width, height = len(rows[0]), len(rows)
    padding = bytes(-3 * width % 4)
    pixels = b"".join(b"".join(bytes((b, g, r)) for r, g, b in row) + padding for row in reversed(rows))
    information = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 0, 0, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 14 + len(information) + len(pixels), 0, 0, 14 + len(information)) + \
        information + pixels
