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

# As Ctrl+C does it, so that the device writes its file when it was told to.
stop_device() {
    local tries
    kill -INT "$DEVICE_PID" 2>/dev/null || true
    for tries in {1..50}; do
        kill -0 "$DEVICE_PID" 2>/dev/null || break
        sleep 0.1
    done
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
    timeout 900 wine build/win64/bin/orvhost.exe "$sample" --play "$script" --shots "$folder" "$@" </dev/null | tr -d '\r' || status=$?
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

# checked NAME SAMPLE [DEVICE-OPTION...]: a script as a test, one line a thing that has to hold. HOST_OPTIONS go to the host.
checked() {
    local name=$1 sample=$2 status=0
    shift 2
    mkdir -p out/test/plays
    start_device "$sample" "$@" || return 1
    play "samples/$name.play" "$sample" "out/test/plays/$name" --device-at "$DEVICE_AT" --level 3 ${HOST_OPTIONS:-} \
        >"out/test/plays/$name.txt" 2>"out/test/plays/$name.err" || status=$?
    stop_device
    python3 scripts/check_play.py "$name" "out/test/plays/$name.txt" "$status" "out/test/plays/$name.err" out/orvdevice.log
}

check_plays() {
    register_component
    checked tour samples/conveyor.json
    # Traced, so that all that the host and the link see of a session is looked through for passwords.
    HOST_OPTIONS=--trace checked failed-save samples/tiny.json --fail-set /OutputFormat/Header:310
    checked close-while-saving samples/tiny.json --silent-after 5
    checked drop-connection samples/tiny.json --silent-after 5
    HOST_OPTIONS="--cluster 1 --device 2 --no-extender" checked slave samples/tunnel.json --cluster 1 --device 2
    checked keyboard samples/conveyor.json
    check_session
    check_no_display
}

# The words of a machine that has none. The server goes with the display that it knew.
check_no_display() {
    local words
    stop_server
    words=$(env -u DISPLAY timeout 60 wine build/win64/bin/orvhost.exe samples/tiny.json 2>&1 </dev/null) &&
        words="ended as if it had run"
    stop_server
    [[ $words == *"is there a display?"* ]] && echo "ok no display: told" || echo "not ok no display: $words"
}

# A whole session: what was entered is what the host, the device and the export hold, and what a second host shows.
check_session() {
    local slave="--cluster 1 --device 2"
    rm -f out/session-*
    # A file dialog that remembers a folder takes no full path from a script.
    wine reg delete 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32' /f >/dev/null 2>&1 || true
    HOST_OPTIONS="$slave" checked session samples/tunnel.json $slave --save-on-exit out/session-device.json
    [[ -f out/session-host.json ]] || return 0
    HOST_OPTIONS="$slave" checked session-again out/session-host.json $slave
    wine build/win64/bin/outfmt.exe export out/session-host.json $slave -o out/session-model.txt >/dev/null 2>&1 || true
    python3 scripts/check_session.py out
}

# A session whose windows are 50 % larger than usual.
at_dpi() {
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
    stop_server
}

shots() {
    local size dpi
    make_prefix
    [[ -n ${DISPLAY:-} ]] || start_display
    register_component
    for dpi in 96 144; do
        at_dpi "$dpi"
        for size in 640x480 800x560 1600x1000; do
            play samples/pages.play samples/conveyor.json "out/shots/$size-$((dpi * 100 / 96))" --size "$size" --level 3 >/dev/null
        done
    done
    at_dpi 96
    python3 samples/make_samples.py --odd >out/odd.json
    for size in 640x480 1600x1000; do
        play samples/strips.play out/odd.json "out/shots/strips-$size" --size "$size" --level 2 >/dev/null
    done
    play samples/bare.play samples/bare.json out/shots/bare --level 3 --size 800x560 >/dev/null
    play samples/other-device.play samples/tunnel.json out/shots/other-device --cluster 1 --level 3 --size 800x560 >/dev/null
    play samples/slave.play samples/tunnel.json out/shots/slave --cluster 1 --device 2 --level 3 --size 800x560 >/dev/null
    start_device samples/tiny.json --fail-set /OutputFormat/Header:310
    play samples/failed-save.play samples/tiny.json out/shots/failed --device-at "$DEVICE_AT" --level 3 --size 800x560 >/dev/null
    stop_device
    start_device samples/tiny.json --silent-after 5
    play samples/close-while-saving.play samples/tiny.json out/shots/waiting --device-at "$DEVICE_AT" --size 800x560 >/dev/null
    stop_device
    source scripts/gallery.sh
    gallery_shots
    ls out/shots/*/*.png
}
