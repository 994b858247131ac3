#!/usr/bin/env python3
"""Writes the pictures of the item types. Run it after a change to a drawing; the same drawings give the same bytes.

  draw_pictures.py              writes pictures/NAME.bmp and pictures/NAME32.bmp
  draw_pictures.py --sheet FILE writes one bitmap of all pictures in both sizes over white, grey and dark, to look at
"""
import argparse
import pathlib
import sys

sys.dont_write_bytecode = True

from picture_canvas import GLYPHS, MASK, Canvas, bitmap  # noqa: E402
import pictures_of_codes  # noqa: E402
import pictures_of_objects  # noqa: E402

DRAWINGS = pictures_of_codes.DRAWINGS | pictures_of_objects.DRAWINGS
SIZES = (16, 32)
FOLDER = pathlib.Path(__file__).resolve().parent / "pictures"

PAGES = ((255, 255, 255), (240, 240, 240), (192, 192, 192), (32, 32, 32))
COLUMNS = 6
CELL = (250, 54)
INK = (0, 0, 0)


def rendered(drawing, pixels):
    canvas = Canvas(pixels)
    drawing(canvas)
    return canvas


def write_pictures():
    for name, drawing in DRAWINGS.items():
        for pixels in SIZES:
            file = FOLDER / f"{name.upper()}{'' if pixels == 16 else pixels}.bmp"
            file.write_bytes(bitmap(rendered(drawing, pixels).over(MASK)))


def paste(sheet, rows, left, top):
    for offset, row in enumerate(rows):
        sheet[top + offset][left:left + len(row)] = row


def label(sheet, text, left, top):
    for index, letter in enumerate(text.upper()):
        for row, cells in enumerate(GLYPHS[letter]):
            for column, cell in enumerate(cells):
                if cell == "1":
                    sheet[top + row][left + 4 * index + column] = INK


def write_sheet(file):
    lines = -(-len(DRAWINGS) // COLUMNS)
    width, height = CELL
    sheet = [[(255, 255, 255)] * (COLUMNS * width) for _ in range(lines * height)]
    for index, (name, drawing) in enumerate(DRAWINGS.items()):
        left, top = index % COLUMNS * width, index // COLUMNS * height
        label(sheet, name, left + 3, top + 43)
        for page, background in enumerate(PAGES):
            x = left + page * 60
            paste(sheet, [[background] * 60 for _ in range(40)], x, top)
            paste(sheet, rendered(drawing, 16).over(background), x + 3, top + 12)
            paste(sheet, rendered(drawing, 32).over(background), x + 24, top + 4)
    pathlib.Path(file).write_bytes(bitmap(sheet))


def main():
    arguments = argparse.ArgumentParser(description="Draws the pictures of the item types")
    arguments.add_argument("--sheet", metavar="FILE", help="write a contact sheet instead")
    sheet = arguments.parse_args().sheet
    if sheet:
        write_sheet(sheet)
    else:
        write_pictures()


if __name__ == "__main__":
    main()
