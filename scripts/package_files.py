"""Looks into the packages without running them, one "ok" or "not ok" line a case: package_files.py FOLDER VERSION."""
import pathlib
import struct
import subprocess
import sys
import tempfile
import zipfile
import zlib

MACHINES = {64: 0x8664, 32: 0x014C}
BINARIES = ("OrvOutFormat.ocx", "orvhost.exe", "orvdevice.exe", "outfmt.exe")
WANTED = {*BINARIES, "OrvOutFormat_0409.chm", "OrvOutFormat_0407.chm", "OrvOutFormat user guide.pdf", "README.txt",
          "LICENSE.txt", "CHANGELOG.md", "SECURITY.md", "samples/conveyor.json", "docs/outfmt.md", "docs/integration.md",
          "docs/examples/minimal_container.cpp",
          "contracts/OrvAddon.idl", "contracts/OrvAddon.tlb", "contracts/OrvAddon.h", "licences/README.txt",
          "licences/GCC runtime.txt", "licences/mingw-w64 runtime and winpthreads.txt"}


def check(good, text, detail=""):
    print(("ok " if good else "not ok ") + text + (f": {detail}" if detail and not good else ""))


def machine(data):
    return struct.unpack_from("<H", data, struct.unpack_from("<I", data, 0x3C)[0] + 4)[0]


def file_version(data):
    """From the fixed part of the version record."""
    at = data.find(struct.pack("<I", 0xFEEF04BD))
    if at < 0:
        return "none"
    high, low = struct.unpack_from("<II", data, at + 8)
    return f"{high >> 16}.{high & 0xFFFF}.{low >> 16}"


def of_zip(path):
    with zipfile.ZipFile(path) as archive:
        return {name.split("/", 1)[1]: archive.read(name) for name in archive.namelist()}


def of_installer(path):
    """What is put into the chosen folder; the installer's own tools are left out."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["7zz", "x", "-y", f"-o{folder}", path], check=True, capture_output=True)
        root = pathlib.Path(folder)
        return {str(file.relative_to(root)): file.read_bytes() for file in root.rglob("*")
                if file.is_file() and not str(file.relative_to(root)).startswith("$")}


def check_contents(bits, files):
    name = f"{bits} bit"
    check(WANTED <= set(files), f"{name}: everything is in the zip", f"missing {sorted(WANTED - set(files))}")
    wrong = [file for file in BINARIES if machine(files[file]) != MACHINES[bits]]
    check(not wrong, f"{name}: the files are of this word size", wrong)
    text = files["README.txt"]
    check(text.count(b"\n") == text.count(b"\r\n") > 20 and b"@" not in text, f"{name}: the read-me is filled in")
    # A library file (.tlb) and the programs' texts may well hold a slash; a home of the build machine they must not.
    homes = [file for file, data in files.items() if str(pathlib.Path.cwd()).encode() in data]
    check(not homes, f"{name}: no file says where it was built", homes)


def check_versions(bits, files, installer, version):
    found = {file: file_version(files[file]) for file in BINARIES}
    found["setup"] = file_version(installer)
    check(set(found.values()) == {version}, f"{bits} bit: every file has version {version}", found)


def check_installer(bits, files, path):
    inside = of_installer(path)
    inside.pop("uninstall.exe", None)
    check(inside == files, f"{bits} bit: the installer holds the files of the zip, byte for byte",
          sorted(set(inside) ^ set(files)))


def link_checksum(data):
    """What a stripped file says about the file of its debug information."""
    header = struct.unpack_from("<I", data, 0x3C)[0]
    count, optional = struct.unpack_from("<H12xH", data, header + 6)
    symbols, entries = struct.unpack_from("<II", data, header + 12)
    strings = symbols + 18 * entries
    for i in range(count):
        at = header + 24 + optional + 40 * i
        name = data[at:at + 8].rstrip(b"\0")
        if name.startswith(b"/"):
            start = strings + int(name[1:])
            name = data[start:data.index(b"\0", start)]
        if name == b".gnu_debuglink":
            size, raw = struct.unpack_from("<I8xI", data, at + 8)
            section = data[raw:raw + size]
            return struct.unpack_from("<I", section, (section.index(b"\0") + 4) // 4 * 4)[0]
    return None


def check_symbols(folder, version, shipped):
    with zipfile.ZipFile(folder / f"OrvOutFormat-{version}-symbols.zip") as archive:
        for bits, files in shipped.items():
            place = f"OrvOutFormat-{version}-symbols/win{bits}"
            wrong = [file for file in BINARIES if archive.read(f"{place}/{file}") != files[file] or
                     zlib.crc32(archive.read(f"{place}/{file}.debug")) != link_checksum(files[file])]
            check(not wrong, f"{bits} bit: the symbols are those of what ships", wrong)


def main(folder, version):
    folder = pathlib.Path(folder)
    shipped = {}
    for bits in MACHINES:
        name = f"OrvOutFormat-{version}-win{bits}"
        shipped[bits] = of_zip(folder / f"{name}.zip")
        setup = folder / f"{name}-setup.exe"
        check_contents(bits, shipped[bits])
        check_versions(bits, shipped[bits], setup.read_bytes(), version)
        check_installer(bits, shipped[bits], setup)
        check(machine(setup.read_bytes()) == MACHINES[bits], f"{bits} bit: the installer is of this word size")
    check(set(shipped[64]) == set(shipped[32]), "both word sizes hold the same files", set(shipped[64]) ^ set(shipped[32]))
    check_symbols(folder, version, shipped)
    sums = subprocess.run(["sha256sum", "--check", "--quiet", "SHA256SUMS"], cwd=folder)
    check(sums.returncode == 0, "the sums are right")


main(*sys.argv[1:])
