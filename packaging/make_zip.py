"""Packs a folder into a zip whose bytes depend on the files alone: make_zip.py FOLDER OUTPUT EPOCH."""
import pathlib
import sys
import time
import zipfile


def main(source, output, epoch):
    root = pathlib.Path(source)
    when = time.gmtime(int(epoch))[:6]
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in sorted(root.rglob("*")):
            if not path.is_file():
                continue
            entry = zipfile.ZipInfo(str(path.relative_to(root.parent)), when)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, path.read_bytes())


main(*sys.argv[1:])
