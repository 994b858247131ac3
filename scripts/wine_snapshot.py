"""What a Wine prefix holds, as lines that can be compared.

wine_snapshot.py take PREFIX OUTPUT     the registry and drive C
wine_snapshot.py compare BEFORE AFTER WHAT
"""
import hashlib
import pathlib
import re
import sys

# What changes although nothing was left behind, and why.
EXPLAINED = (
    (r"file drive_c/users/[^/]+/(AppData/Local/)?Temp/", "temporary files"),
    (r"value system System\\\\CurrentControlSet\\\\Control\\\\Class\\\\.* \"DriverDateData\"=", "entered at each start of Wine's desktop"),
    (r"key user Software\\\\Classes$", "opened for writing by every registration; always there on Windows"),
)


def registry(path):
    """Keys and values of a registry file, without the times at which they were written."""
    key, entry = "", ""
    for line in path.read_text(encoding="utf-8", errors="replace").splitlines():
        if line.startswith("["):
            key = line[1:line.rindex("]")]
            yield f"key {path.stem} {key}"
        elif line.startswith(("#", ";", "WINE")) or not line:
            continue
        else:
            entry += line.rstrip("\\")
            if not line.endswith("\\"):
                yield f"value {path.stem} {key} {entry}"
                entry = ""


def files(prefix):
    for path in (prefix / "drive_c").rglob("*"):
        name = path.relative_to(prefix)
        if path.is_symlink():
            yield f"link {name}"
        elif path.is_dir():
            yield f"file {name}/"
        else:
            yield f"file {name} {hashlib.sha1(path.read_bytes()).hexdigest()}"


def take(prefix, output):
    prefix = pathlib.Path(prefix)
    lines = [line for name in ("system", "user", "userdef") for line in registry(prefix / f"{name}.reg")]
    pathlib.Path(output).write_text("\n".join(sorted([*lines, *files(prefix)])) + "\n", encoding="utf-8")


def explanation(line):
    return next((why for pattern, why in EXPLAINED if re.match(pattern, line)), None)


def compare(before, after, what):
    old, new = (set(pathlib.Path(name).read_text(encoding="utf-8").splitlines()) for name in (before, after))
    changes = [("gone", line) for line in sorted(old - new)] + [("left", line) for line in sorted(new - old)]
    unexplained = [change for change in changes if not explanation(change[1])]
    for change, line in changes:
        print(f"   {change}: {line} ({explanation(line) or 'unexplained'})")
    print(("not ok " if unexplained else "ok ") + what)


{"take": take, "compare": compare}[sys.argv[1]](*sys.argv[2:])
