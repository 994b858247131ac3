#!/usr/bin/env bash
# Format, clang-tidy and the table of rooms. Ends with 1 when anything is wrong and says how to put it right.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
status=0

python3 scripts/lint_rooms.py || status=1

mapfile -t sources < <(git ls-files '*.h' '*.cpp')
if ! clang-format --dry-run -Werror "${sources[@]}" 2>out/format.log; then
    grep -oE '^[^:]+' out/format.log | sort -u | head -40
    echo "Format: ./dev format puts it right"
    status=1
fi

# clang-tidy sees what the native build compiles; what needs the system's headers is checked by two cross compilers.
mapfile -t checked < <(python3 - <<'PY'
import json, os, subprocess
known = set(subprocess.run(["git", "ls-files", "*.cpp"], capture_output=True, text=True).stdout.split())
here = os.getcwd() + "/"
for entry in json.load(open("build/native/compile_commands.json")):
    name = entry["file"].removeprefix(here)
    if name in known and not name.startswith("tests/"):
        print(name)
PY
)
if ! printf '%s\0' "${checked[@]}" | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/native --quiet --extra-arg=-Wno-unknown-warning-option --warnings-as-errors='*' \
    >out/tidy.log 2>/dev/null; then
    grep -E 'error:|warning:' out/tidy.log | sort -u | head -60
    status=1
fi
[[ $status -eq 0 ]] && echo "lint: clean (${#sources[@]} files, ${#checked[@]} through clang-tidy)"
exit $status
