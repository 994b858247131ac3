# Sourced by ./dev: the native tests and the replays of the corpora in a build that counts the lines it runs.

run_coverage() {
    local build=${COVERAGE_BUILD:-build/coverage} program name failed=0
    find "$build" -name '*.gcda' -delete
    mkdir -p out/coverage/logs
    for program in "$build"/tests/bin/*; do
        [[ -x $program && -f $program ]] || continue
        name=$(basename "$program")
        timeout 900 "$program" --gtest_brief=1 >"out/coverage/logs/$name.log" 2>&1 </dev/null ||
            { echo "$name failed: out/coverage/logs/$name.log"; failed=1; }
    done
    python3 scripts/coverage.py "$build" out/coverage || failed=1
    return "$failed"
}
