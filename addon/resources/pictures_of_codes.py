"""The pictures of what belongs to one code, each a drawing on 32 units."""
from picture_canvas import AMBER, BLUE, PAPER, SLATE
from picture_motifs import (FEW_BARS, Drawings, arrow, bars, bit_row, check, clock, counter, partial, ruler, selector,
                            star)

DRAWINGS = Drawings()
picture = DRAWINGS.enter


def subject(c, x=2):
    """The code that a picture is about, above what it says of it."""
    bars(c, x, 2, 14)


@picture
def Code(c):
    bars(c, 2, 4, 24)


@picture
def Length(c):
    subject(c)
    ruler(c)


@picture
def ReadingsMask(c):
    subject(c)
    bit_row(c, "1011")


@picture
def CodeTotalReadings(c):
    subject(c)
    counter(c)


@picture
def CodePartialReadings(c):
    bars(c, 2, 2, 14, FEW_BARS[:3])
    partial(c, 24, 8)
    counter(c)


def axes(c, letter, x, y, along):
    """Three axes from the corner; the one in question stands out."""
    ends = {"X": (27, 25), "Y": (7, 5), "Z": (17, 15)}
    for name, end in ends.items():
        if name != letter:
            c.line(7, 25, *end)
    c.line(7, 25, *ends[letter], BLUE, 4)
    c.polygon(*along, colour=BLUE)
    c.text(letter, x, y, AMBER)


@picture
def XPos(c):
    axes(c, "X", 22, 6, ((24, 18), (32, 25), (24, 32)))


@picture
def YPos(c):
    axes(c, "Y", 18, 2, ((0, 8), (7, 0), (14, 8)))


@picture
def ZPos(c):
    axes(c, "Z", 26, 12, ((10, 8), (22, 8), (22, 20)))


@picture
def CodeID(c):
    subject(c)
    c.text("ID", 9, 20, BLUE)


@picture
def CodeDir(c):
    subject(c)
    arrow(c, 3, 24, 25, weight=4, head=7)


@picture
def CodeDist(c):
    c.rect(8, 0, 16, 6)
    c.line(16, 9, 16, 19, BLUE)
    c.polygon((16, 5), (22, 12), (10, 12), colour=BLUE)
    c.polygon((16, 23), (22, 16), (10, 16), colour=BLUE)
    bars(c, 2, 24, 8)


@picture
def DecodeMode(c):
    subject(c)
    selector(c)


@picture
def DecodeTime(c):
    bars(c, 0, 4, 24, FEW_BARS[:3])
    clock(c, 23, 16, 9, (23, 10, SLATE), (27, 16, AMBER))


@picture
def DecodeScans(c):
    bars(c, 2, 2, 28)
    for y in (9, 17, 25):
        c.line(1, y - 2, 31, y + 2, AMBER)


def track(c, at):
    """Where a code is between two ends."""
    for x in (1, 31):
        c.line(x, 18, x, 30)
    c.line(3, 25, 29, 25)
    bars(c, at - 6, 2, 14, ((0, 2), (4, 4), (10, 2)))
    c.polygon((at, 18), (at + 6, 25), (at, 32), (at - 6, 25), colour=BLUE)


@picture
def AvgCodePos(c):
    track(c, 16)


@picture
def MinCodePos(c):
    track(c, 7)


@picture
def MaxCodePos(c):
    track(c, 25)


@picture
def InkSpread(c):
    bars(c, 0, 2, 28, ((0, 2), (4, 2), (22, 2), (26, 6)))
    c.disc(14, 20, 7, BLUE)
    c.polygon((14, 4), (20, 17), (8, 17), colour=BLUE)


@picture
def Decodability(c):
    bars(c, 0, 2, 20)
    c.disc(18, 18, 10, None)
    c.line(24, 24, 29, 29, AMBER, 5)
    c.ring(18, 18, 9, AMBER, PAPER)
    bars(c, 14, 12, 12, ((0, 2), (4, 4)))


@picture
def EncoderValue(c):
    c.ring(16, 14, 13, SLATE, PAPER)
    for start in range(0, 360, 45):
        c.sector(16, 14, 11, start, start + 22.5, BLUE, 5)
    c.disc(16, 14, 3, SLATE)
    c.line(1, 29, 31, 29)


@picture
def ReadingArm(c):
    c.path((5, 31), (5, 3), (27, 3), (27, 31))
    c.rect(2, 12, 8, 10, AMBER)
    c.rect(22, 12, 8, 10)
    c.line(11, 17, 19, 17, AMBER)


@picture
def StartSync(c):
    c.path((1, 25), (9, 25), (9, 7), (31, 7))
    c.polygon((16, 14), (30, 22), (16, 30), colour=BLUE)


@picture
def StopSync(c):
    c.path((1, 7), (23, 7), (23, 25), (31, 25))
    c.rect(4, 14, 14, 14, AMBER)


def burst(c, x, y):
    """Where a beam strikes."""
    for dx, dy in ((0, 6), (5, 5), (5, -5)):
        c.line(x - dx, y - dy, x + dx, y + dy, AMBER)


@picture
def LaserNumber(c):
    c.rect(0, 2, 12, 12)
    c.line(13, 8, 25, 8, AMBER, 4)
    burst(c, 26, 8)
    c.text("#", 2, 20, BLUE)
    c.text("1", 16, 20, BLUE)


@picture
def ReadingPersistence(c):
    bars(c, 0, 4, 24, ((0, 4), (6, 2), (10, 2)))
    c.polygon((16, 4), (31, 4), (16, 28), (31, 28), colour=AMBER)
    for y in (5, 27):
        c.line(15, y, 31, y)


@picture
def FocusPosition(c):
    for y in (7, 25):
        c.path((1, y), (11, y), (27, 16), colour=AMBER)
    lens = [(11 + side * (1 + 5 * (1 - (step / 7) ** 2)), 16 + 2 * step)
            for side, steps in ((-1, range(-7, 8)), (1, range(7, -8, -1))) for step in steps]
    c.polygon(*lens, colour=BLUE)
    c.disc(28, 16, 4)


@picture
def OscillatingAngle(c):
    for side in (-1, 1):
        c.line(16, 28, 16 + side * 8, 14)
        c.polygon((16 + side * 16, 18), (16 + side * 15, 6), (16 + side * 5, 13), colour=AMBER)
    c.sector(16, 28, 24, -40, 40, AMBER, 20)
    c.disc(16, 28, 4)


def question(c, x, y):
    c.sector(x, y, 8, -90, 180, AMBER, 4)
    c.rect(x - 2, y + 4, 4, 8, AMBER)
    c.rect(x - 2, y + 14, 4, 4, AMBER)


@picture
def CodeRejectReason(c):
    bars(c, 0, 4, 24, FEW_BARS[:3])
    question(c, 23, 10)


@picture
def QuietZoneDim(c):
    bars(c, 10, 4, 24, ((0, 2), (4, 4), (10, 2)))
    for x in (0, 24):
        c.frame(x, 4, 8, 24, BLUE)


@picture
def QualityIndex(c):
    bars(c, 0, 4, 24, FEW_BARS[:3])
    star(c, 22, 17, 11)


@picture
def CheckDigitID(c):
    subject(c)
    c.text("7", 4, 20)
    check(c, 16, 20)
