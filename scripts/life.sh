# Sourced by ./dev: the component's file loaded, used and let go of very often in one process.

# live CYCLES: a table of what an early cycle and the last one found; 1 when something grew.
live() {
    local cycles=$1 log=out/life/life.log status=0
    mkdir -p out/life
    ORV_LIFE_CYCLES="$cycles" ORV_LONGEST_RUN=7200 wine build/win64/tests/bin/orv_com_tests.exe \
        '--gtest_filter=LongLife.*:Teardown.*' >"$log" 2>&1 </dev/null || status=$?
    tr -d '\r' <"$log" | grep -E '^life|Failure|^\[  (PASSED|FAILED)' || true
    [[ $status -eq 0 ]] || { echo "Ended with status $status; all of it stands in $log" >&2; tail -n 30 "$log" >&2; return 1; }
}
