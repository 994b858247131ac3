"""Adds up the reports of the test programs and of the scripted checks; the last line is the total."""
import json
import pathlib
import sys


def of_program(report):
    data = json.loads(report.read_text(encoding="utf-8"))
    skipped = sum(case.get("result") == "SKIPPED" for suite in data["testsuites"] for case in suite["testsuite"])
    return data["tests"] - data["failures"] - data.get("disabled", 0) - skipped, data["failures"], skipped


def of_script(log):
    """A scripted check prints "ok ..." or "not ok ..." a case; a log without any is a failure."""
    lines = log.read_text(encoding="utf-8", errors="replace").splitlines()
    good = sum(line.startswith("ok ") for line in lines)
    bad = sum(line.startswith("not ok ") for line in lines)
    return good, bad if good + bad else 1, 0


def main(folder):
    totals = [0, 0, 0]
    for half in sorted(path for path in pathlib.Path(folder).iterdir() if path.is_dir()):
        if half.name in ("plays", "guide"):  # what was made; what was found in it stands in the scripts' logs
            continue
        counts = [0, 0, 0]
        reports = [of_program(path) for path in half.glob("*.json")]
        if half.name == "scripts":
            reports += [of_script(path) for path in half.glob("*.log")]
        for report in reports:
            counts = [a + b for a, b in zip(counts, report)]
        # A program that failed without a failed case crashed or ran out of time.
        for marker in half.glob("*.failed"):
            report = marker.with_suffix(".json")
            if not report.exists() or of_program(report)[1] == 0:
                counts[1] += 1
        print(f"{half.name}: {counts[0]} passed, {counts[1]} failed, {counts[2]} skipped")
        totals = [a + b for a, b in zip(totals, counts)]
    print(f"{totals[0]} passed, {totals[1]} failed")
    return 0 if totals[1] == 0 and totals[0] > 0 else 1


sys.exit(main(sys.argv[1]))
