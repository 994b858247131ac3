"""Looks into the component's files: exports, imports, version record, string table, hardening, size."""
import re
import struct
import subprocess
import sys

EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
SYSTEM = re.compile(
    r"^(advapi32|comctl32|comdlg32|gdi32|imm32|kernel32|msvcrt|ole32|oleaut32|oleacc|shell32|shlwapi|user32|uxtheme"
    r"|version|msimg32|api-ms-win-[a-z0-9-]+|ucrtbase)\.dll$", re.I)
NAMES = ("NUL SOH STX ETX EOT ENQ ACK BEL BS HT LF VT FF CR SO SI DLE DC1 DC2 DC3 DC4 NAK SYN ETB CAN EM SUB ESC "
         "FS GS RS US Space").split()
RT_STRING, RT_VERSION = 6, 16


class Image:
    """Just enough of the portable executable format to walk the resources."""

    def __init__(self, path):
        self.data = open(path, "rb").read()
        header = struct.unpack_from("<I", self.data, 0x3C)[0]
        sections, optional_size = struct.unpack_from("<H12xH", self.data, header + 6)
        optional = header + 24
        wide = struct.unpack_from("<H", self.data, optional)[0] == 0x20B
        self.characteristics = struct.unpack_from("<H", self.data, optional + 70)[0]
        self.resources = struct.unpack_from("<I", self.data, optional + (112 if wide else 96) + 2 * 8)[0]
        self.sections = [struct.unpack_from("<8xIIII", self.data, optional + optional_size + 40 * i)
                         for i in range(sections)]

    def offset(self, address):
        for size, start, raw_size, raw in self.sections:
            if start <= address < start + max(size, raw_size):
                return raw + address - start
        raise ValueError("address outside the file")

    def entries(self, directory):
        base = self.offset(self.resources)
        named, numbered = struct.unpack_from("<HH", self.data, base + directory + 12)
        for i in range(named + numbered):
            yield struct.unpack_from("<II", self.data, base + directory + 16 + 8 * i)

    def resource(self, kind):
        """Every resource of a kind as (id, bytes)."""
        for type_id, at in self.entries(0):
            if type_id != kind:
                continue
            for name, inner in self.entries(at & 0x7FFFFFFF):
                for _, leaf in self.entries(inner & 0x7FFFFFFF):
                    address, size = struct.unpack_from("<II", self.data, self.offset(self.resources) + leaf)
                    start = self.offset(address)
                    yield name, self.data[start:start + size]

    def strings(self):
        table = {}
        for block, data in self.resource(RT_STRING):
            at = 0
            for i in range(16):
                length = struct.unpack_from("<H", data, at)[0]
                table[(block - 1) * 16 + i] = data[at + 2:at + 2 + 2 * length].decode("utf-16-le")
                at += 2 + 2 * length
        return table


def dump(path):
    return subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], capture_output=True, text=True).stdout or \
        subprocess.run(["i686-w64-mingw32-objdump", "-p", path], capture_output=True, text=True).stdout


def check(good, text):
    print(("ok " if good else "not ok ") + text)


def inspect(path):
    name = "/".join(path.split("/")[-3:])
    text = dump(path)
    table = text.split("[Ordinal/Name Pointer] Table")[-1].split("\n\n")[0]
    exports = re.findall(r"\[\s*\d+\]\s*(?:\+base\[\s*\d+\]\s*)?(?:[0-9a-f]+\s+)?(\S+)$", table, re.M)
    check(set(exports) == EXPORTS and len(exports) == 4, f"{name}: exports {sorted(exports)}")
    imports = sorted(set(re.findall(r"DLL Name: (\S+)", text)))
    foreign = [dll for dll in imports if not SYSTEM.match(dll)]
    check(bool(imports) and not foreign, f"{name}: imports {' '.join(imports)}" + (f"; foreign {foreign}" if foreign else ""))
    image = Image(path)
    strings = image.strings()
    check([strings.get(4096 + i) for i in range(33)] == NAMES, f"{name}: string table 4096..4128")
    versions = [data.decode("utf-16-le", "ignore") for _, data in image.resource(RT_VERSION)]
    check(any("FileVersion" in data and "ProductVersion" in data for data in versions), f"{name}: version record")
    check(image.characteristics & 0x140 == 0x140, f"{name}: address randomisation and no executable data")
    print(f"   {name}: {len(image.data)} bytes")


for file in sys.argv[1:]:
    try:
        inspect(file)
    except (OSError, ValueError, struct.error) as problem:
        check(False, f"{file}: {problem}")
