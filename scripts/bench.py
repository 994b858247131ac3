"""Runs the benchmarks and makes the one table of ratios of their report; both are kept under out/bench/."""
import json
import pathlib
import subprocess
import sys

PROGRAM = "build/release/bin/orv_bench"
KINDS = ["at most {:.2f} of its time", "at least {:.2f} times its speed", ""]


def duration(seconds):
    for unit, scale in (("s", 1), ("ms", 1e3), ("us", 1e6)):
        if seconds * scale >= 1:
            return f"{seconds * scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def row_of(run):
    name, *argument = run["name"].removesuffix("/manual_time").split("/")
    name += f", {argument[0]}x" if argument else ""
    if run.get("error_occurred"):
        return [name, run["error_message"], "", "", "", "", "FAILED"]
    kind = int(run["kind"])
    met = [run["ratio"] <= run["aim"], run["ratio"] >= run["aim"], None][kind]
    return [name, duration(run["ours"]), f"{duration(run['theirs'])}  {run['label']}", f"{run['ratio']:.2f}",
            f"{run['low']:.2f} .. {run['high']:.2f}", KINDS[kind].format(run["aim"]),
            {True: "met", False: "missed", None: ""}[met]]


def table(runs):
    rows = [["what", "ours", "opponent", "ratio", "middle half", "aim", ""]] + [row_of(run) for run in runs]
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    lines = ["  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in rows]
    pairs = ", ".join(str(run["iterations"]) for run in runs)
    return "\n".join([*lines, f"Medians of paired ratios, processor time of one thread; pairs a row: {pairs}"]) + "\n"


def main(seconds):
    folder = pathlib.Path("out/bench")
    folder.mkdir(parents=True, exist_ok=True)
    report = folder / "report.json"
    subprocess.run([PROGRAM, f"--benchmark_min_time={seconds}", f"--benchmark_out={report}",
                    "--benchmark_out_format=json"], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    runs = json.loads(report.read_text(encoding="utf-8"))["benchmarks"]
    text = table(runs)
    (folder / "table.txt").write_text(text, encoding="utf-8")
    print(text, end="")
    # A missed aim is a finding; a benchmark that could not run is a failure.
    return 1 if any(run.get("error_occurred") for run in runs) else 0


sys.exit(main(float(sys.argv[1]) if len(sys.argv) > 1 else 5.0))
