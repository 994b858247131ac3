"""The house as ARCHITECTURE.md draws it, held against the code: who may know whom, and whether what it names is there."""
import pathlib
import re
import subprocess
import sys

DOCUMENT = "ARCHITECTURE.md"
BEYOND = {"system", "contracts", "library"}
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


def tracked(*patterns):
    return subprocess.run(["git", "ls-files", *patterns], capture_output=True, text=True, check=True).stdout.split("\n")[:-1]


def read_table(document):
    """The rooms with what each may include, and the folders that may include anything."""
    rooms, free = {}, set()
    for names, allowed in re.findall(r"^\| (`[^|]*`) \|[^|]*\| ([^|]*) \|$", document, re.MULTILINE):
        folders = [name.rstrip("/") for name in re.findall(r"`([^`]+)`", names)]
        if allowed == "anything":
            free.update(folders)
        else:
            rooms[folders[0]] = set() if allowed == "–" else set(allowed.split(", "))
    return rooms, free


def room_of(path, rooms):
    parts = pathlib.PurePosixPath(path).parts
    for depth in (2, 1):
        room = "/".join(parts[:depth])
        if len(parts) > depth and room in rooms:
            return room
    return parts[0] if len(parts) > 1 else ""


def target_of(include, angled, rooms):
    name = include.split("/")[-1]
    if name in CONTRACTS or name.endswith("_i.c"):
        return "contracts"
    if include.startswith(LIBRARY):
        return "library"
    if angled:
        return "standard" if include in STANDARD else "system"
    return room_of(include, rooms) if "/" in include else "same"


def all_folders():
    return {parent.as_posix() for file in tracked() for parent in pathlib.PurePosixPath(file).parents}


def wrong_includes(rooms, free):
    for file in tracked("*.h", "*.cpp", "*.rc", "*.in"):
        room = room_of(file, rooms)
        if room == "" or file.split("/")[0] in free:
            continue
        if room not in rooms:
            yield f"{file}: {DOCUMENT} has no room called {room}"
            continue
        for number, line in enumerate(pathlib.Path(file).read_text(encoding="utf-8").splitlines(), 1):
            match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)', line)
            target = target_of(match[2], match[1] == "<", rooms) if match else "same"
            if target not in {"same", "standard", room} | rooms[room] and not target.startswith("generated"):
                yield f"{file}:{number}: {room} may not include {match[2]} ({target})"


def wrong_rows(rooms, free):
    """Rooms that are gone, or allowed and unknown; folders of which the table says nothing."""
    folders = all_folders()
    for room in rooms.keys() | free:
        if room not in folders:
            yield f"{DOCUMENT}: there is no folder {room}/"
    for room, allowed in rooms.items():
        for unknown in allowed - rooms.keys() - BEYOND:
            yield f"{DOCUMENT}: {room} may include {unknown}, which is no room"
    known = {name.split("/")[0] for name in rooms.keys() | free}
    for folder in sorted(folders - known):
        if "/" not in folder and not folder.startswith("."):
            yield f"{DOCUMENT}: the table lacks {folder}/"


def wrong_names(document):
    """Paths and names in code type that the code does not have."""
    code = "\n".join(pathlib.Path(file).read_text(encoding="utf-8", errors="replace")
                     for file in tracked("*.h", "*.cpp", "*.idl", "*.def", "CMakeLists.txt", "*/CMakeLists.txt"))
    lasts = {folder.split("/")[-1] for folder in all_folders()}
    words = set(re.findall(r"\w+", code))
    prose = re.sub(r"^```.*?^```", "", document, flags=re.MULTILINE | re.DOTALL)
    drawn = re.findall(r"\b[A-Z]\w*[a-z]\w*[A-Z]\w*\b|\b[A-Z]\w*[A-Z][a-z]\w*\b", document)
    for name in {*re.findall(r"`([^`\n]+)`", prose), *drawn}:
        if name.startswith("./dev"):
            continue
        if "/" in name or re.search(r"\.(md|txt|py|sh|h|cpp|def|idl)$", name):
            if not pathlib.Path(name).exists() and name.rstrip("/") not in lasts:
                yield f"{DOCUMENT}: there is no {name}"
        else:
            for word in re.findall(r"\b[A-Za-z]\w{3,}", name):
                if word not in words:
                    yield f"{DOCUMENT}: the code has no {word}"


def main():
    document = pathlib.Path(DOCUMENT).read_text(encoding="utf-8")
    rooms, free = read_table(document)
    problems = [*wrong_includes(rooms, free), *wrong_rows(rooms, free), *wrong_names(document)]
    print("\n".join(sorted(problems)), end="\n" if problems else "")
    return 1 if problems or not rooms else 0


sys.exit(main())
