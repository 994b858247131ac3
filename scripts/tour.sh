# Sourced by ./dev: the component registered in the project's Wine prefix, a device, and the bench host between them.

register_component() {
    wine regsvr32 /s build/win64/bin/OrvOutFormat.ocx >out/regsvr32.log 2>&1 || { cat out/regsvr32.log >&2; echo "Registering the component failed" >&2; return 1; }
}

# start_device FILE [OPTION...]: sets DEVICE_AT.
start_device() {
    local log=out/orvdevice.log tries
    : >"$log"
    wine build/win64/bin/orvdevice.exe "$@" --port 0 >"$log" 2>&1 </dev/null &
    DEVICE_PID=$!
    for tries in {1..200}; do
        DEVICE_AT=$(sed -n 's/\r//; s/^listening on //p' "$log")
        [[ -n $DEVICE_AT ]] && return 0
        kill -0 "$DEVICE_PID" 2>/dev/null || break
        sleep 0.1
    done
    cat "$log" >&2
    echo "The device did not come up" >&2
    return 1
}

stop_device() {
    kill "$DEVICE_PID" 2>/dev/null || true
    wait "$DEVICE_PID" 2>/dev/null || true
}

to_png() {
    local picture
    for picture in "$1"/*.bmp; do
        [[ -f $picture ]] || continue
        convert "$picture" "${picture%.bmp}.png" && rm "$picture"
    done
}

# play SCRIPT SAMPLE FOLDER [OPTION...]: transcript on standard output, pictures in the folder.
play() {
    local script=$1 sample=$2 folder=$3 status=0
    shift 3
    rm -rf "$folder"
    mkdir -p "$folder"
    timeout 300 wine build/win64/bin/orvhost.exe "$sample" --play "$script" --shots "$folder" "$@" </dev/null | tr -d '\r' || status=$?
    to_png "$folder"
    return "$status"
}

tour() {
    local folder=$1 status=0
    start_device samples/conveyor.json
    play samples/tour.play samples/conveyor.json "$folder" --device-at "$DEVICE_AT" --level 3 || status=$?
    stop_device
    return "$status"
}

run() {
    make_prefix
    if [[ -n ${DISPLAY:-} ]]; then
        register_component
        start_device samples/conveyor.json
        wine build/win64/bin/orvhost.exe samples/conveyor.json --device-at "$DEVICE_AT"
        stop_device
        return 0
    fi
    start_display
    register_component
    tour out/run
    echo "Pictures: $(ls out/run/*.png | tr '\n' ' ')"
}

# The same tour as a test: one line a thing that has to hold.
check_tour() {
    register_component
    local status=0
    tour out/test/tour >out/test/tour.txt 2>out/test/tour.err || status=$?
    python3 scripts/check_tour.py out/test/tour.txt out/test/tour "$status"
}
