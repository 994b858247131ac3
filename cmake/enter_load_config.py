"""Enters the record _load_config_used into the directory of a linked file: enter_load_config.py NM FILE."""
import struct
import subprocess
import sys

LOAD_CONFIG = 10  # its place among the data directories


def address_of_record(nm, path):
    for line in subprocess.run([nm, path], stdout=subprocess.PIPE, text=True, check=True).stdout.splitlines():
        words = line.split()
        # 32-bit names carry one more underscore.
        if len(words) == 3 and words[2] in ("_load_config_used", "__load_config_used"):
            return int(words[0], 16)
    sys.exit(f"{path} has no _load_config_used")


def offset_of(data, header, address):
    sections, optional_size = struct.unpack_from("<H12xH", data, header + 6)
    for i in range(sections):
        size, start, raw_size, raw = struct.unpack_from("<8xIIII", data, header + 24 + optional_size + 40 * i)
        if start <= address < start + min(size, raw_size):
            return raw + address - start
    sys.exit("the record is outside the file's sections")


def main(nm, path):
    data = bytearray(open(path, "rb").read())
    header = struct.unpack_from("<I", data, 0x3C)[0]
    optional = header + 24
    wide = struct.unpack_from("<H", data, optional)[0] == 0x20B
    base = struct.unpack_from("<Q" if wide else "<I", data, optional + (24 if wide else 28))[0]
    address = address_of_record(nm, path) - base
    size = struct.unpack_from("<I", data, offset_of(data, header, address))[0]
    struct.pack_into("<II", data, optional + (112 if wide else 96) + 8 * LOAD_CONFIG, address, size)
    open(path, "wb").write(data)


main(*sys.argv[1:])
