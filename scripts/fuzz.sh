# Sourced by ./dev: runs the fuzz targets side by side, each from a copy of its corpus, one line a target.

# fuzz_one PROGRAM SECONDS: what it found, what it logged and the inputs that broke something land in out/fuzz/NAME/.
fuzz_one() {
    local program=$1 seconds=$2 name folder status=0
    name=$(basename "$program")
    name=${name#fuzz_}
    folder=out/fuzz/$name
    rm -rf "$folder"
    mkdir -p "$folder/found"
    cp -r "fuzz/corpus/$name" "$folder/corpus"
    "$program" -max_total_time="$seconds" -timeout=20 -print_final_stats=1 -artifact_prefix="$folder/found/" \
        "$folder/corpus" >"$folder/log" 2>&1 </dev/null || status=$?
    fuzz_line "$name" "$folder" "$status"
    return "$status"
}

# fuzz_line NAME FOLDER STATUS
fuzz_line() {
    local name=$1 folder=$2 status=$3 runs speed added coverage crashes
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$folder/log")
    speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$folder/log")
    added=$(sed -n 's/^stat::new_units_added: *//p' "$folder/log")
    coverage=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$folder/log" | tail -n 1)
    crashes=$(find "$folder/found" -type f | wc -l)
    printf '%-12s %9s runs %7s/s  coverage %5s  new units %5s  crashes %s\n' \
        "$name" "${runs:-?}" "${speed:-?}" "${coverage:-?}" "${added:-?}" "$crashes"
    [[ $status -eq 0 ]] && return 0
    # Some crashes leave no statistics behind, so the reason is looked for in the log.
    grep -m 3 -E 'Expectation failed|ERROR: |runtime error|terminate called' "$folder/log" | sed 's/^/    /' || tail -n 3 "$folder/log"
    find "$folder/found" -type f -printf '    %p\n'
}

run_fuzzers() {
    local seconds=$1 program pid pids=() failed=0
    [[ $seconds =~ ^[1-9][0-9]*$ ]] || { echo "How many seconds? $seconds is no number" >&2; return 2; }
    mkdir -p out/fuzz
    for program in build/fuzz/fuzz/bin/fuzz_*; do
        # As many at once as there are processors.
        while [[ $(jobs -rp | wc -l) -ge $(nproc) ]]; do sleep 0.2; done
        fuzz_one "$program" "$seconds" &
        pids+=($!)
    done
    for pid in "${pids[@]}"; do wait "$pid" || failed=1; done
    return "$failed"
}
