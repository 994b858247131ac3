# Sourced by ./dev: runs the fuzz targets side by side, each from a copy of its corpus, one line a target; and takes what
# was found into the corpora.

# fuzz_one PROGRAM SECONDS: what it found, what it logged and the inputs that broke something land in out/fuzz/NAME/.
fuzz_one() {
    local program=$1 seconds=$2 name folder status=0
    name=$(basename "$program")
    name=${name#fuzz_}
    folder=out/fuzz/$name
    rm -rf "$folder"
    mkdir -p "$folder/found"
    cp -r "fuzz/corpus/$name" "$folder/corpus"
    # Where each byte was allocated is worth a fifth of the time; a fault is looked into with its input anyway.
    ASAN_OPTIONS=malloc_context_size=2 "$program" -max_total_time="$seconds" -timeout=120 -print_final_stats=1 -artifact_prefix="$folder/found/" \
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
    # What merely took long is kept beside them under a name of its own.
    crashes=$(find "$folder/found" -type f ! -name 'slow-unit-*' | wc -l)
    printf '%-12s %9s runs %7s/s  coverage %5s  new units %5s  crashes %s\n' \
        "$name" "${runs:-?}" "${speed:-?}" "${coverage:-?}" "${added:-?}" "$crashes"
    [[ $status -eq 0 ]] && return 0
    # Some crashes leave no statistics behind, so the reason is looked for in the log.
    grep -m 3 -E 'Expectation failed|ERROR: |runtime error|terminate called' "$folder/log" | sed 's/^/    /' || tail -n 3 "$folder/log"
    find "$folder/found" -type f -printf '    %p\n'
}

fuzz_programs() { echo "${FUZZ_BUILD:-build/fuzz}"/fuzz/bin/fuzz_*; }

run_fuzzers() {
    local seconds=$1 program pid pids=() failed=0 programs
    [[ $seconds =~ ^[1-9][0-9]*$ ]] || { echo "How many seconds? $seconds is no number" >&2; return 2; }
    mkdir -p out/fuzz
    read -ra programs <<<"$(fuzz_programs)"
    echo "${#programs[@]} targets side by side on $(nproc) processors for $seconds seconds"
    for program in "${programs[@]}"; do
        fuzz_one "$program" "$seconds" &
        pids+=($!)
    done
    for pid in "${pids[@]}"; do wait "$pid" || failed=1; done
    [[ $failed -eq 0 ]] && echo "No target found a fault" || echo "Inputs that broke something: out/fuzz/*/found/"
    return "$failed"
}

# minimise_one PROGRAM: the fewest inputs of those in the repo and those last found that reach what all of them reach.
# Files with names of their own were made by hand and stay.
minimise_one() {
    local program=$1 name corpus kept before
    name=$(basename "$program")
    name=${name#fuzz_}
    corpus=fuzz/corpus/$name
    kept=out/fuzz/$name/kept
    before=$(find "$corpus" -type f | wc -l)
    rm -rf "$kept"
    mkdir -p "$kept" "out/fuzz/$name/corpus" "out/fuzz/$name/found"
    find "$corpus" -type f -regextype posix-extended ! -regex '.*/[0-9a-f]{40}' -exec cp {} "$kept" \;
    # Edges without the number of times that they were taken: a replay is to be short.
    "$program" -set_cover_merge=1 -use_counters=0 -timeout=120 -artifact_prefix="out/fuzz/$name/found/" "$kept" "$corpus" "out/fuzz/$name/corpus" \
        >"out/fuzz/$name/merge.log" 2>&1 </dev/null || { tail -n 5 "out/fuzz/$name/merge.log"; return 1; }
    rm -f "$corpus"/*
    cp "$kept"/* "$corpus"
    echo "$name: $(find "$corpus" -type f | wc -l) inputs ($before before), $(du -sb "$corpus" | cut -f1) bytes"
}

minimise_corpora() {
    local program pid pids=() failed=0 programs
    read -ra programs <<<"$(fuzz_programs)"
    for program in "${programs[@]}"; do
        minimise_one "$program" &
        pids+=($!)
    done
    for pid in "${pids[@]}"; do wait "$pid" || failed=1; done
    return "$failed"
}
