"""Lines that are not blank, by room; tests and fuzz targets count as tests, everything else that is code as code."""
import collections
import pathlib
import subprocess

CODE = {".c", ".cc", ".cpp", ".h", ".hpp", ".in", ".def", ".idl", ".rc", ".py", ".sh", ".cmake", ".play", ".vbs"}
TESTS = {"tests", "fuzz"}


def is_code(path):
    return path.suffix in CODE or path.name in {"CMakeLists.txt", "dev"}


files = subprocess.run(["git", "ls-files"], capture_output=True, text=True, check=True).stdout.split("\n")
rooms = collections.Counter()
for path in map(pathlib.Path, filter(None, files)):
    if is_code(path) and path.exists():
        lines = sum(1 for line in path.read_text(encoding="utf-8", errors="replace").splitlines() if line.strip())
        room = "/".join(path.parts[:-1][:2]) or "(top)"
        rooms[room] += lines
tests = sum(count for room, count in rooms.items() if room.split("/")[0] in TESTS)
total = sum(rooms.values())
for room, count in sorted(rooms.items()):
    print(f"{count:7d}  {room}")
print(f"{total - tests:7d}  code\n{tests:7d}  tests: {100 * tests / max(total, 1):.1f} % of {total}")
