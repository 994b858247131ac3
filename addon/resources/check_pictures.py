#!/usr/bin/env python3
"""Writes the resource script of the pictures, a pair for each key of the catalogue, or says what is wrong with them.

The keys come from the catalogue's own table, so a new item type cannot be built without its pictures.
"""
import argparse
import pathlib
import re
import struct
import sys

SIZES = {"": 16, "32": 32}
# Pictures without an entry: that of a type the catalogue leaves out, the code type toolbar's, and the product's own.
EXTRA = ("CheckDigitID", "None", "Barcode", "ImgPicture")
TABLE = re.compile(r"kCatalogue\[\]\s*=\s*\{\n(.*?)^\};", re.S | re.M)
ROW = re.compile(r'\{\s*k\w+,\s*\d+,\s*L"(\w+)"')
HEADER = struct.Struct("<2sIHHI IiiHHII")


def catalogue_keys(source):
    table = TABLE.search(source.read_text(encoding="utf-8"))
    if not table:
        sys.exit(f"{source}: no table called kCatalogue")
    lines = [line.strip() for line in table[1].splitlines()]
    rows = [line for line in lines if line and not line.startswith("//")]
    keys = []
    for row in rows:
        match = ROW.match(row)
        if not match:
            sys.exit(f"{source}: cannot find the key in: {row}")
        keys.append(match[1])
    if not keys:
        sys.exit(f"{source}: the catalogue has no rows")
    return keys


def fault(file, pixels):
    """What is wrong with one picture; empty when nothing is."""
    if not file.exists():
        return "is missing"
    content = file.read_bytes()
    if len(content) < HEADER.size:
        return "is too short for a bitmap"
    magic, _, _, _, _, _, width, height, _, bits, compression, _ = HEADER.unpack_from(content)
    if magic != b"BM":
        return "is no bitmap"
    if (width, height) != (pixels, pixels):
        return f"is {width} x {height} pixels instead of {pixels} x {pixels}"
    if bits != 24 or compression:
        return f"has {bits} bits, compression {compression}, instead of 24 uncompressed"
    return ""


def main():
    parser = argparse.ArgumentParser(description="Checks the pictures against the catalogue")
    for name in ("catalogue", "pictures", "script", "depfile"):
        parser.add_argument(name, type=pathlib.Path)
    arguments = parser.parse_args()

    keys = catalogue_keys(arguments.catalogue)
    problems = []
    wanted = {}
    for key in (*keys, *EXTRA):
        for suffix, pixels in SIZES.items():
            name = key.upper() + suffix
            if name in wanted:
                problems.append(f"{name} is the name of two pictures")
            wanted[name] = file = arguments.pictures / f"{name}.bmp"
            problem = fault(file, pixels)
            if problem:
                problems.append(f"{file.name} {problem}")
    problems += [f"{file.name} belongs to no item type" for file in sorted(arguments.pictures.iterdir())
                 if file.stem not in wanted or file.suffix != ".bmp"]
    if problems:
        sys.exit("\n".join(f"Picture {problem} ({arguments.pictures})" for problem in problems))

    arguments.script.write_text("".join(f'{name} BITMAP "{file.as_posix()}"\n' for name, file in wanted.items()))
    inputs = [arguments.pictures, *wanted.values()]
    escaped = " ".join(str(file).replace(" ", "\\ ") for file in inputs)
    arguments.depfile.write_text(f"{arguments.script.name}: {escaped}\n")


if __name__ == "__main__":
    main()
