"""Runs the benchmarks, native and under Wine, and makes the one table of ratios of their reports; all is kept under
out/bench/. A row is a dictionary: name, ours, theirs, label, ratio, low, high, kind, aim, pairs, where, or error."""
import json
import os
import pathlib
import subprocess
import sys

FOLDER = pathlib.Path("out/bench")
NATIVE = "build/release/bin/orv_bench"
KINDS = ["at most {:.2f}", "at least {:.2f}x its speed", ""]
SIZES = [("size of the component, 64 bit", "build/win64/bin"), ("size of the component, 32 bit", "build/win32/bin")]


def duration(seconds):
    for unit, scale in (("s", 1), ("ms", 1e3), ("us", 1e6)):
        if seconds * scale >= 1:
            return f"{seconds * scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def amount(row, key):
    return f"{row[key] / 1024:.0f} KB" if row.get("unit") == "bytes" else duration(row[key])


def native_rows(seconds):
    report = FOLDER / "native.json"
    subprocess.run([NATIVE, f"--benchmark_min_time={seconds}", f"--benchmark_out={report}",
                    "--benchmark_out_format=json"], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    rows = []
    for run in json.loads(report.read_text(encoding="utf-8"))["benchmarks"]:
        name, *argument = run["name"].removesuffix("/manual_time").split("/")
        row = {**run, "name": name + (f", {argument[0]}x" if argument else ""), "pairs": run["iterations"],
               "where": "native"}
        if run.get("error_occurred"):
            row["error"] = run["error_message"]
        rows.append(row)
    return rows


def windows_rows(seconds):
    """Programs write one row a line. One that ends badly, or says nothing, is a row that failed."""
    rows = []
    programs = sorted(pathlib.Path("build/win64/bin").glob("orv_*_bench.exe"))
    for program in programs:
        print(f"{program.stem} ...", file=sys.stderr, flush=True)
        try:
            run = subprocess.run(["wine", str(program), str(seconds)], stdin=subprocess.DEVNULL,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=300 + 40 * seconds,
                                 check=False, encoding="utf-8", errors="replace")
            text, remarks, failure = run.stdout, run.stderr, f"exit status {run.returncode}" * bool(run.returncode)
        except subprocess.TimeoutExpired as late:
            text, remarks, failure = (late.stdout or b"").decode(errors="replace"), "", "no end in time"
        (FOLDER / f"{program.stem}.txt").write_text(text + remarks, encoding="utf-8")
        written = [json.loads(line) for line in text.splitlines() if line.startswith("{")]
        rows += written
        if failure or not written:
            rows.append({"name": program.stem, "error": failure or "no rows", "where": "wine"})
    return rows


def size_rows():
    """The component's file against an empty control that is linked the same way."""
    rows = []
    for name, folder in SIZES:
        ours, theirs = (pathlib.Path(folder, file) for file in ("OrvOutFormat.ocx", "orv_empty_control.dll"))
        if not ours.exists() or not theirs.exists():
            rows.append({"name": name, "error": "not built", "where": "files"})
            continue
        sizes = ours.stat().st_size, theirs.stat().st_size
        ratio = sizes[0] / sizes[1]
        rows.append({"name": name, "ours": sizes[0], "theirs": sizes[1], "label": "empty control", "ratio": ratio,
                     "low": ratio, "high": ratio, "kind": 2, "aim": 0, "pairs": 1, "where": "files", "unit": "bytes"})
    return rows


def cells_of(row):
    if "error" in row:
        return [row["name"], row["where"], row["error"], "", "", "", "", "", "FAILED"]
    kind = int(row["kind"])
    met = [row["ratio"] <= row["aim"], row["ratio"] >= row["aim"], None][kind]
    digits = 4 if row["ratio"] < 0.1 else 2
    return [row["name"], row["where"], amount(row, "ours"), f"{amount(row, 'theirs')}  {row['label']}",
            f"{row['ratio']:.{digits}f}", f"{row['low']:.{digits}f} .. {row['high']:.{digits}f}",
            KINDS[kind].format(row["aim"]), str(row["pairs"]), {True: "met", False: "missed", None: ""}[met]]


def table(rows):
    heads = ["what", "where", "ours", "opponent", "ratio", "middle half", "aim", "pairs", ""]
    lines = [heads] + [cells_of(row) for row in rows]
    widths = [max(len(line[column]) for line in lines) for column in range(len(heads))]
    text = ["  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip() for line in lines]
    notes = ("Medians of paired ratios. Native rows: processor time of one thread, wall time where a save waits for a "
             "device. Rows under Wine: wall time.")
    return "\n".join([*text, notes]) + "\n"


def main(seconds):
    FOLDER.mkdir(parents=True, exist_ok=True)
    os.environ.setdefault("WINEDEBUG", "-all")
    rows = native_rows(seconds) + windows_rows(seconds) + size_rows()
    (FOLDER / "report.json").write_text(json.dumps(rows, indent=1), encoding="utf-8")
    text = table(rows)
    (FOLDER / "table.txt").write_text(text, encoding="utf-8")
    print(text, end="")
    # A missed aim is a finding; a benchmark that could not run is a failure.
    return 1 if any("error" in row for row in rows) else 0


sys.exit(main(float(sys.argv[1]) if len(sys.argv) > 1 else 5.0))
