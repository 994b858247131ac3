# Sourced by ./dev: runs the command line and the editor against the deviating device of tests/plans.

apply_plans() {
    UBSAN_OPTIONS=print_stacktrace=1 python3 tests/plans/run.py outfmt build/native/bin/outfmt "$@"
}

# Needs a Wine prefix and a display.
editor_plans() {
    python3 tests/plans/run.py editor build/win64/bin/orvhost.exe build/win64/bin/OrvOutFormat.ocx "$@"
}

all_plans() {
    local status=0
    mkdir -p out/plans
    apply_plans "$@" | tee out/plans/apply.txt || status=1
    editor_plans "$@" | tee out/plans/editor.txt || status=1
    return "$status"
}
