"""Sums what gcov counted in an instrumented build: line coverage by room, and the lines that nothing ran.

coverage.py BUILD OUT [least]: a table to the console, OUT/uncovered.txt with every such line, OUT/files.txt by file. Ends
with 1 when a room is below `least` per cent (90)."""
import collections
import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys

ROOMS = ("text", "device", "model", "controls", "editor", "addon")
# Windows' own side of a room is tested under Wine, where nothing counts lines.
ELSEWHERE = ("addon/com/", "addon/resources/", "controls/win32/")
ROOT = pathlib.Path(__file__).resolve().parent.parent


def room_of(path):
    """Empty for what is counted nowhere; a table of texts is no code either."""
    if path.startswith(ELSEWHERE) or not path.endswith((".cpp", ".h")):
        return ""
    return next((room for room in ROOMS if path.startswith(room + "/")), "")


def count_lines(data_files):
    """Counts of every line by file; an object file that was never run counts as zeros."""
    # Sources outside of the repository are left out by their absolute names.
    command = ["gcov", "--json-format", "--stdout", "--relative-only", "--source-prefix", str(ROOT), *data_files]
    text = subprocess.run(command, capture_output=True, text=True, check=True, cwd=ROOT).stdout
    counts = collections.defaultdict(lambda: collections.defaultdict(int))
    for report in map(json.loads, text.splitlines()):
        for file in report["files"]:
            # A compiler that was started with relative names keeps them.
            path = pathlib.Path(ROOT, report["current_working_directory"], file["file"])
            name = os.path.relpath(path if not (ROOT / file["file"]).exists() else ROOT / file["file"], ROOT)
            if room_of(name):
                for line in file["lines"]:
                    counts[name][line["line_number"]] += line["count"]
    return counts


def all_counts(build):
    notes = [str(path) for path in sorted(build.rglob("*.gcno")) if "googletest" not in path.parts]
    parts = [notes[i:i + 8] for i in range(0, len(notes), 8)]
    total = collections.defaultdict(lambda: collections.defaultdict(int))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for counts in pool.map(count_lines, parts):
            for file, lines in counts.items():
                for number, count in lines.items():
                    total[file][number] += count
    return total


def missed_in(file, lines):
    source = (ROOT / file).read_text(encoding="utf-8").splitlines()
    return [f"{file}:{number}: {source[number - 1].strip()}" for number in sorted(lines) if lines[number] == 0]


def main(build, out, least=90.0):
    total = all_counts(pathlib.Path(build).resolve())
    out = pathlib.Path(out)
    out.mkdir(parents=True, exist_ok=True)
    rooms = {room: [0, 0] for room in ROOMS}
    missed, by_file = [], []
    for file in sorted(total):
        lines = total[file]
        here = missed_in(file, lines)
        missed += here
        by_file.append(f"{100 * (1 - len(here) / len(lines)):6.1f} %  {len(here):4} of {len(lines):4} not run  {file}")
        rooms[room_of(file)][0] += len(lines)
        rooms[room_of(file)][1] += len(lines) - len(here)
    (out / "uncovered.txt").write_text("\n".join(missed) + "\n", encoding="utf-8")
    (out / "files.txt").write_text("\n".join(by_file) + "\n", encoding="utf-8")
    print(f"{'room':10} {'lines':>7} {'run':>7}")
    failed = False
    for room, (lines, run) in rooms.items():
        share = 100 * run / lines if lines else 0
        failed |= share < float(least)
        print(f"{room:10} {lines:7} {run:7} {share:6.1f} %{'' if share >= float(least) else '  below ' + str(least) + ' %'}")
    print(f"{len(missed)} lines that nothing ran: {out}/uncovered.txt")
    return 1 if failed else 0


sys.exit(main(*sys.argv[1:]))
