"""The pictures of what belongs to a whole reading, to a device or to the editor, each a drawing on 32 units."""
from picture_canvas import AMBER, BLUE, PAPER, SLATE
from picture_motifs import (BARS, FEW_BARS, Drawings, arrow, bars, bit_row, check, clock, counter, cross, leaf,
                            lifetime, parcel, partial, pulse, ruler, scanner, selector, sigma)

DRAWINGS = Drawings()
picture = DRAWINGS.enter


@picture
def TotalReadingsMask(c):
    sigma(c, 11, 3, 10, 12)
    bit_row(c, "1011")


@picture
def FailureMask(c):
    cross(c, 11, 3, 10)
    bit_row(c, "0100", colour=AMBER)


@picture
def ScannerStatus(c):
    scanner(c, 8, 8)
    c.rect(20, 2, 12, 28)
    for y, colour in ((8, AMBER), (16, PAPER), (24, BLUE)):
        c.disc(26, y, 4, colour)


@picture
def GlobTotalReadings(c):
    sigma(c, 11, 3, 10, 11)
    counter(c)


@picture
def GlobPartialReadings(c):
    partial(c, 16, 8)
    counter(c)


@picture
def PackIdentifier(c):
    parcel(c, 6, 2, 20, 14)
    c.text("ID", 9, 20, BLUE)


@picture
def RejectedCodesCount(c):
    bars(c, 2, 2, 14, FEW_BARS)
    cross(c, 22, 4, 8)
    counter(c)


def clock_with(c, letter, x, hand):
    clock(c, 14, 14, 14, (14, 5, SLATE), (20, 14, SLATE))
    c.line(14, 14, *hand, AMBER)
    c.rect(x - 2, 18, 32, 14, None)
    c.text(letter, x, 22, BLUE)


@picture
def Hours(c):
    clock_with(c, "h", 24, (20, 14))


@picture
def Minutes(c):
    clock_with(c, "m", 20, (14, 5))


@picture
def Seconds(c):
    clock_with(c, "s", 24, (7, 21))


@picture
def Day(c):
    leaf(c, "D")


@picture
def Month(c):
    leaf(c, "WIDE M")


@picture
def Year(c):
    leaf(c, "Y")


@picture
def Checksum(c):
    sigma(c, 4, 5, 15, 20, 4)
    check(c, 18, 20)


@picture
def OtherInfo(c):
    c.disc(16, 16, 15, BLUE)
    c.rect(14, 6, 4, 4, PAPER)
    c.rect(14, 14, 4, 12, PAPER)


TWO_BARS = ((0, 4), (6, 4))


@picture
def MinCodeDist(c):
    for x in (4, 18):
        bars(c, x, 2, 14, TWO_BARS)
    arrow(c, 1, 9, 25)
    arrow(c, 31, 23, 25)
    for x in (13, 19):
        c.line(x, 19, x, 31)


@picture
def MaxCodeDist(c):
    for x in (0, 22):
        bars(c, x, 2, 14, TWO_BARS)
    arrow(c, 16, 26, 25)
    arrow(c, 16, 6, 25)
    for x in (1, 31):
        c.line(x, 19, x, 31)


@picture
def ReadingMode(c):
    scanner(c)
    selector(c)


@picture
def PackDimension(c):
    parcel(c, 6, 2, 20, 16)
    ruler(c)


@picture
def StartCounter(c):
    c.polygon((11, 1), (23, 8), (11, 15), colour=BLUE)
    counter(c)


@picture
def StopCounter(c):
    c.rect(10, 2, 12, 12, AMBER)
    counter(c)


@picture
def ExitCounter(c):
    c.path((13, 3), (7, 3), (7, 13), (13, 13))
    arrow(c, 12, 24, 8)
    counter(c)


@picture
def Diagnostics(c):
    pulse(c, 11, 10)
    bit_row(c, "1011")


@picture
def DiagnosticStats(c):
    pulse(c, 11, 10)
    counter(c)


@picture
def TotalReadingPhases(c):
    c.path((3, 13), (7, 13), (7, 3), (15, 3), (15, 13), (21, 13), (21, 3), (29, 3), colour=BLUE)
    lifetime(c)


@picture
def TotalWorkingHours(c):
    clock(c, 10, 8, 8, (10, 3, AMBER), (13, 8, AMBER))
    c.text("h", 22, 4, BLUE)
    lifetime(c)


@picture
def TotalGoodReads(c):
    check(c, 10, 4)
    lifetime(c)


@picture
def TotalNoReads(c):
    cross(c, 11, 3, 10)
    lifetime(c)


@picture
def TotalMultiReads(c):
    check(c, 4, 4)
    check(c, 16, 4)
    lifetime(c)


@picture
def TotalPartialReads(c):
    bars(c, 4, 2, 14, BARS[:3])
    bars(c, 4, 2, 4, BARS[3:], AMBER)
    lifetime(c)


@picture
def MiscString(c):
    for x, turn in ((4, 1), (12, 1), (20, -1), (28, -1)):
        y = 11 + turn * 3
        c.disc(x, y, 3, BLUE)
        c.polygon((x - turn * 3, y), (x, y), (x + turn * 2, y - turn * 10), (x - turn * 1, y - turn * 7), colour=BLUE)
    c.line(3, 25, 29, 25)


@picture
def NONE(c):
    c.ring(16, 16, 14)
    c.line(7, 7, 25, 25)


@picture
def Barcode(c):
    bars(c)
    c.line(1, 17, 31, 17, AMBER)


@picture
def ImgPicture(c):
    c.frame(0, 2, 32, 28)
    bars(c, 6, 6, 12, ((0, 4), (6, 2), (10, 2), (14, 2), (18, 2)))
    for x in (6, 14, 22):
        c.rect(x, 22, 4, 4, BLUE)