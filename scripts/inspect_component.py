"""Looks into the files that ship: imports and hardening of each; of the component also exports, version record, strings."""
import re
import struct
import subprocess
import sys

EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
SYSTEM = re.compile(
    r"^(advapi32|comctl32|comdlg32|gdi32|imm32|kernel32|msvcrt|ole32|oleaut32|oleacc|shell32|shlwapi|user32|uxtheme"
    r"|version|msimg32|api-ms-win-[a-z0-9-]+|ucrtbase)\.dll$", re.I)
NETWORK = re.compile(r"^(ws2_32|mswsock)\.dll$", re.I)  # for the programs; the component has no business there
NAMES = ("NUL SOH STX ETX EOT ENQ ACK BEL BS HT LF VT FF CR SO SI DLE DC1 DC2 DC3 DC4 NAK SYN ETB CAN EM SUB ESC "
         "FS GS RS US Space").split()
RT_STRING, RT_VERSION = 6, 16
RESOURCES, RELOCATIONS, LOAD_CONFIG = 2, 5, 10  # places among the data directories
NO_RELOCATIONS, SYSTEM_FOLDER_ONLY = 0x0001, 0x0800
HIGH_ENTROPY, DYNAMIC_BASE, NO_EXECUTE = 0x0020, 0x0040, 0x0100
EXECUTABLE, WRITABLE = 0x20000000, 0x80000000
# Fewer checks of the stack than this, and the option has not reached the code.
CHECKED_CALLS = 50


class Image:
    """Just enough of the portable executable format to walk the resources."""

    def __init__(self, path):
        self.data = open(path, "rb").read()
        header = struct.unpack_from("<I", self.data, 0x3C)[0]
        sections, optional_size = struct.unpack_from("<H12xH", self.data, header + 6)
        self.file_flags = struct.unpack_from("<H", self.data, header + 22)[0]
        optional = header + 24
        self.wide = struct.unpack_from("<H", self.data, optional)[0] == 0x20B
        self.base = struct.unpack_from("<Q" if self.wide else "<I", self.data, optional + (24 if self.wide else 28))[0]
        self.characteristics = struct.unpack_from("<H", self.data, optional + 70)[0]
        self.directories = [struct.unpack_from("<II", self.data, optional + (112 if self.wide else 96) + 8 * i)
                            for i in range(16)]
        self.resources = self.directories[RESOURCES][0]
        headers = [optional + optional_size + 40 * i for i in range(sections)]
        self.sections = [struct.unpack_from("<8xIIII", self.data, at) for at in headers]
        self.section_flags = [struct.unpack_from("<I", self.data, at + 36)[0] for at in headers]

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


    def dependent_load_flags(self):
        address, _ = self.directories[LOAD_CONFIG]
        return struct.unpack_from("<H", self.data, self.offset(address) + (0x4E if self.wide else 0x36))[0] if address else 0

    def calls_of(self, target):
        """How often code calls the function at that address."""
        count = 0
        for (size, start, raw_size, raw), flags in zip(self.sections, self.section_flags):
            if not flags & EXECUTABLE:
                continue
            code = self.data[raw:raw + min(size, raw_size)]
            at = code.find(b"\xe8")
            while 0 <= at <= len(code) - 5:
                count += start + at + 5 + struct.unpack_from("<i", code, at + 1)[0] == target - self.base
                at = code.find(b"\xe8", at + 1)
        return count


def tool(name, *arguments):
    for triplet in ("x86_64", "i686"):
        done = subprocess.run([f"{triplet}-w64-mingw32-{name}", *arguments], capture_output=True, text=True)
        if done.stdout:
            return done.stdout
    return ""


def address_of(path, symbol):
    """From the file of debug information that the build leaves beside what ships; None when it is not linked."""
    found = re.search(rf"^([0-9a-f]+) T _?{symbol}$", tool("nm", path + ".debug"), re.M)
    return int(found[1], 16) if found else None


def check(good, text):
    print(("ok " if good else "not ok ") + text)


def inspect_imports(name, text, networked):
    imports = sorted(set(re.findall(r"DLL Name: (\S+)", text)))
    foreign = [dll for dll in imports if not SYSTEM.match(dll) and not (networked and NETWORK.match(dll))]
    check(bool(imports) and not foreign, f"{name}: imports {' '.join(imports)}" + (f"; foreign {foreign}" if foreign else ""))


def inspect_hardening(name, path, image):
    wanted = DYNAMIC_BASE | NO_EXECUTE | (HIGH_ENTROPY if image.wide else 0)
    moves = image.characteristics & wanted == wanted and not image.file_flags & NO_RELOCATIONS and \
        image.directories[RELOCATIONS][1] > 0
    check(moves, f"{name}: address randomisation with relocations, and no executable data")
    both = [i for i, flags in enumerate(image.section_flags) if flags & EXECUTABLE and flags & WRITABLE]
    check(not both, f"{name}: no section is both written and run" + (f": {both}" if both else ""))
    check(image.dependent_load_flags() == SYSTEM_FOLDER_ONLY, f"{name}: imports come from the system's folder")
    target = address_of(path, "__stack_chk_fail")
    calls = image.calls_of(target) if target else 0
    check(calls >= CHECKED_CALLS, f"{name}: {calls} places check the stack")


def inspect_component(name, text, image):
    table = text.split("[Ordinal/Name Pointer] Table")[-1].split("\n\n")[0]
    exports = re.findall(r"\[\s*\d+\]\s*(?:\+base\[\s*\d+\]\s*)?(?:[0-9a-f]+\s+)?(\S+)$", table, re.M)
    check(set(exports) == EXPORTS and len(exports) == 4, f"{name}: exports {sorted(exports)}")
    strings = image.strings()
    check([strings.get(4096 + i) for i in range(33)] == NAMES, f"{name}: string table 4096..4128")
    versions = [data.decode("utf-16-le", "ignore") for _, data in image.resource(RT_VERSION)]
    check(any("FileVersion" in data and "ProductVersion" in data for data in versions), f"{name}: version record")


def inspect(path):
    name = "/".join(path.split("/")[-3:])
    text = tool("objdump", "-p", path)
    image = Image(path)
    inspect_imports(name, text, networked=not path.endswith(".ocx"))
    inspect_hardening(name, path, image)
    if path.endswith(".ocx"):
        inspect_component(name, text, image)
    print(f"   {name}: {len(image.data)} bytes")


for file in sys.argv[1:]:
    try:
        inspect(file)
    except (OSError, ValueError, struct.error) as problem:
        check(False, f"{file}: {problem}")
