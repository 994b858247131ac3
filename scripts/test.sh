# Sourced by ./dev: runs every test program of a build and adds up.

# run_programs PRESET [PREFIX...]: each program of the build under the prefix; its own report lands beside the log.
run_programs() {
    local preset=$1 program name
    shift
    mkdir -p "out/test/$preset"
    rm -f "out/test/$preset"/*
    local found=0
    for program in "build/$preset"/tests/bin/*; do
        [[ -x $program && -f $program ]] || continue
        case $program in *.exe) name=$(basename "$program" .exe) ;; *.*) continue ;; *) name=$(basename "$program") ;; esac
        [[ $preset == win* && $program != *.exe ]] && continue
        found=1
        echo "== $preset $name"
        timeout 900 "$@" "$program" --gtest_brief=1 "--gtest_output=json:out/test/$preset/$name.json" \
            >"out/test/$preset/$name.log" 2>&1 </dev/null || { echo "-- failed with status $?"; tail -n 60 "out/test/$preset/$name.log"; touch "out/test/$preset/$name.failed"; }
        # A program that ended before its report counts as one failure.
        [[ -f out/test/$preset/$name.json ]] || touch "out/test/$preset/$name.failed"
    done
    [[ $found -eq 1 ]] || { echo "No test programs in build/$preset" >&2; return 1; }
}

run_native() {
    UBSAN_OPTIONS=print_stacktrace=1 ASAN_OPTIONS=detect_leaks=1 run_programs native
    source scripts/plans.sh
    mkdir -p out/test/scripts
    apply_plans >out/test/scripts/apply-plans.log 2>&1 ||
        grep '^not ok' out/test/scripts/apply-plans.log || true
}

# The native programs run while the compiler has the next build to do.
test_all() {
    local native
    build native
    run_native >out/test/native.log 2>&1 &
    native=$!
    build win64 || { kill "$native" 2>/dev/null; return 1; }
    wait "$native"
    cat out/test/native.log
    run_windows
}

run_windows() {
    # 32-bit programs cannot run here: what ships is built and looked into.
    build win32 --target OrvOutFormat orvhost orvdevice outfmt
    make_prefix
    start_display
    run_programs win64 wine
    mkdir -p out/test/scripts
    python3 scripts/inspect_component.py build/win{64,32}/bin/{OrvOutFormat.ocx,orvhost.exe,orvdevice.exe,outfmt.exe} \
        >out/test/scripts/inspect.log || true
    cat out/test/scripts/inspect.log
    source scripts/tour.sh
    check_plays >out/test/scripts/plays.log 2>&1 || echo "not ok plays: ended early" >>out/test/scripts/plays.log
    cat out/test/scripts/plays.log
    source scripts/plans.sh
    editor_plans --often >out/test/scripts/editor-plans.log 2>&1 || true
    cat out/test/scripts/editor-plans.log
    source scripts/gallery.sh
    check_gallery >out/test/scripts/gallery.log 2>&1 || echo "not ok gallery: ended early" >>out/test/scripts/gallery.log
    cat out/test/scripts/gallery.log
    source scripts/guide.sh
    { check_guide && check_first_task; } >out/test/scripts/guide.log 2>&1 || echo "not ok guide: ended early" >>out/test/scripts/guide.log
    cat out/test/scripts/guide.log
    source scripts/package.sh
    source scripts/check_package.sh
    # In a shell of its own: it works in another Wine prefix.
    (build_guide && package && check_package) >out/test/scripts/package.log 2>&1 ||
        echo "not ok package: ended early" >>out/test/scripts/package.log
    cat out/test/scripts/package.log
}

run_tests() {
    local half=$1
    rm -rf out/test
    mkdir -p out/test
    case $half in
    all) test_all ;;
    native)
        build native
        run_native
        ;;
    windows)
        build win64
        run_windows
        ;;
    *)
        echo "No half called $half: native or windows" >&2
        return 2
        ;;
    esac
    python3 scripts/sum_tests.py out/test
}
