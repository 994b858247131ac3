# Sourced by ./dev: a Wine prefix of the project's own and a display of the call's own. Both go when the call ends.

export WINEPREFIX="${ORV_WINEPREFIX:-$PWD/build/wine}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml="
# Wine names files in the caller's encoding, and a machine without a locale has one of 128 characters.
[[ $(locale charmap 2>/dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8

make_prefix() {
    [[ -f $WINEPREFIX/.ready ]] && return 0
    echo "Making a Wine prefix"
    rm -rf "$WINEPREFIX"
    mkdir -p "$(dirname "$WINEPREFIX")"
    # Without a display nothing of the set-up can block.
    env -u DISPLAY WINEARCH=win64 timeout 300 wineboot -i >out/wineboot.log 2>&1 || { cat out/wineboot.log >&2; return 1; }
    # No window manager is there: windows manage themselves, and the keys follow the focus.
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    # A crash must end a test, not wait for somebody to read a box.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
    wineserver -w
    touch "$WINEPREFIX/.ready"
}

start_display() {
    [[ -n ${ORV_DISPLAY_PID:-} ]] && return 0
    local number_file=out/display
    rm -f "$number_file"
    Xvfb -displayfd 3 -screen 0 1680x1050x24 -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
    ORV_DISPLAY_PID=$!
    local tries
    for tries in {1..100}; do
        [[ -s $number_file ]] && break
        sleep 0.1
    done
    [[ -s $number_file ]] || { echo "No virtual display came up" >&2; return 1; }
    export DISPLAY=":$(cat "$number_file")"
}

# Nothing to stop is no failure: a call's own result is what it ends with.
stop_server() {
    wineserver -k 2>/dev/null || true
    timeout 60 wineserver -w || true
}

stop_wine() {
    [[ ! -d $WINEPREFIX ]] || stop_server
    [[ -z ${ORV_DISPLAY_PID:-} ]] || kill "$ORV_DISPLAY_PID" 2>/dev/null || true
}
