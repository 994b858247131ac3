"""The table of rooms, checked from the includes: who may know whom."""
import pathlib
import re
import subprocess
import sys

ROOMS = {
    "text": set(),
    "platform": {"text"},
    "device": {"text", "platform"},
    "model": {"text", "device"},
    "controls": {"text", "platform"},
    "editor": {"text", "platform", "device", "model", "controls"},
    "addon": {"text", "platform", "device", "model", "controls", "editor"},
    "addon/com": {"text", "platform", "device", "model", "controls", "editor", "addon", "platform/win32",
                  "controls/win32", "addon/resources", "contracts", "system"},
    "addon/resources": {"text", "system"},
    "controls/win32": {"controls", "text", "platform", "platform/win32", "system"},
    "platform/win32": {"platform", "text", "system"},
    "host/sim": {"text", "platform", "device", "library"},
    "host/com": {"host/sim", "text", "platform", "device", "contracts", "system"},
    "cli": {"text", "platform", "device", "model", "host/sim", "library"},
    "cli/app": {"cli", "host/sim", "text", "system"},
    "host/app": {"host/sim", "host/com", "text", "platform", "device", "contracts", "system", "library"},
}
FREE = {"tests", "bench", "fuzz", "docs", "samples", "scripts", "cmake"}
LIBRARY = ("nlohmann/", "valijson/", "CLI/", "asio")
CONTRACTS = {"OrvAddon.h", "OrvOutFormat.h"}
STANDARD = {
    "algorithm", "any", "array", "atomic", "bit", "cctype", "cerrno", "charconv", "chrono", "clocale", "cmath",
    "compare", "concepts", "condition_variable", "csignal", "cstddef", "cstdint", "cstdio", "cstdlib", "cstring",
    "ctime", "cwchar", "cwctype", "deque", "exception", "filesystem", "format", "fstream", "functional", "future",
    "initializer_list", "iomanip", "ios", "iosfwd", "iostream", "istream", "iterator", "limits", "list", "locale", "map",
    "memory", "memory_resource", "mutex", "new", "numeric", "optional", "ostream", "queue", "random", "ranges", "ratio", "set", "span",
    "sstream", "stack", "stdexcept", "stop_token", "streambuf", "string", "string_view", "system_error", "thread",
    "tuple", "type_traits", "typeinfo", "unordered_map", "unordered_set", "utility", "variant", "vector", "version",
    "source_location",
}


def room_of(path):
    parts = pathlib.PurePosixPath(path).parts
    for depth in (2, 1):
        room = "/".join(parts[:depth])
        if len(parts) > depth and room in ROOMS:
            return room
    return parts[0] if len(parts) > 1 else ""


def target_of(include, angled):
    name = include.split("/")[-1]
    if name in CONTRACTS or name.endswith("_i.c"):
        return "contracts"
    if include.startswith(LIBRARY):
        return "library"
    if angled:
        return "standard" if include in STANDARD else "system"
    return room_of(include) if "/" in include else "same"


problems = 0
files = subprocess.run(["git", "ls-files", "*.h", "*.cpp", "*.rc", "*.in"], capture_output=True, text=True).stdout.split()
for file in files:
    room = room_of(file)
    if room in FREE or room == "" or file.split("/")[0] in FREE:
        continue
    if room not in ROOMS:
        print(f"{file}: no room called {room}")
        problems += 1
        continue
    for number, line in enumerate(pathlib.Path(file).read_text(encoding="utf-8").splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)', line)
        if not match:
            continue
        target = target_of(match[2], match[1] == "<")
        if target in {"same", "standard", room} or target in ROOMS[room] or target.startswith("generated"):
            continue
        print(f"{file}:{number}: {room} may not include {match[2]} ({target})")
        problems += 1
sys.exit(1 if problems else 0)
