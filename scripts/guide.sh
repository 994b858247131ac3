# Sourced by ./dev: the user's guide from its source, and its pictures from the running editor.

GUIDE_SIZE=840x640
# What the bench host's window adds round the editor: border, title and menu; border and status line.
GUIDE_TOP=42 GUIDE_BOTTOM=25 GUIDE_SIDE=4

# Debian's own interpreter, whichever stands first in the path: the packages are made for it.
make_guide() { /usr/bin/python3 -B scripts/guide "$1"; }

build_guide() {
    make_guide build/guide || return 1
    local folder
    for folder in build/win64/bin build/win32/bin; do
        [[ -d $folder ]] && cp build/guide/*.chm "$folder/"
    done
    return 0
}

# The component looks for it beside itself. Built once, and again when its source or a text of the product is newer.
have_guide() {
    local newest=build/guide/OrvOutFormat_0409.chm
    [[ -f $newest && -f build/win64/bin/OrvOutFormat_0409.chm ]] &&
        [[ -z $(find docs/guide scripts/guide text model/catalogue.cpp CMakeLists.txt -newer "$newest" -type f -print -quit) ]] &&
        return 0
    build_guide
}

hide_guide() { rm -f build/win64/bin/OrvOutFormat_*.chm; }

# Only the editor, in few colours: the committed files stay small.
to_guide() {
    local picture size
    for picture in "$1"/*.png; do
        size=$(identify -format '%w %h' "$picture")
        convert "$picture" +repage \
            -crop "$((${size% *} - 2 * GUIDE_SIDE))x$((${size#* } - GUIDE_TOP - GUIDE_BOTTOM))+$GUIDE_SIDE+$GUIDE_TOP" \
            +repage +dither -colors 64 -strip -define png:compression-level=9 -define png:exclude-chunks=date,time \
            "PNG8:docs/guide/pictures/$(basename "$picture")"
    done
}

# play_task FOLDER: the first task of the guide, step by step; 1 when a step does not do what the guide says.
play_task() {
    local status=0
    start_device samples/conveyor.json
    play docs/guide/first-task.play samples/conveyor.json "$1" --device-at "$DEVICE_AT" --level 3 --size "$GUIDE_SIZE" || status=$?
    stop_device
    return "$status"
}

# For the tests, one "ok" or "not ok" line each: the guide builds without a fault, and its first task does what it says.
check_guide() {
    local faults
    if faults=$(make_guide out/test/guide 2>&1 >/dev/null); then
        echo "ok guide: built"
    else
        echo "not ok guide: $(tr '\n' ';' <<<"$faults")"
    fi
}

check_first_task() {
    local transcript=out/test/plays/first-task.txt
    mkdir -p out/test/plays
    if play_task out/test/plays/first-task >"$transcript" 2>&1; then
        echo "ok guide: its first task"
    else
        echo "not ok guide: its first task: $(tail -n 3 "$transcript" | tr '\n' ';')"
    fi
}

take_pictures() {
    make_prefix
    [[ -n ${DISPLAY:-} ]] || start_display
    register_component
    play docs/guide/pictures.play samples/conveyor.json out/guide/pages --level 3 --size "$GUIDE_SIZE" >out/guide-pages.log ||
        { tail -n 5 out/guide-pages.log >&2; return 1; }
    play_task out/guide/task >out/guide-task.log || { tail -n 5 out/guide-task.log >&2; return 1; }
    mkdir -p docs/guide/pictures
    rm -f docs/guide/pictures/*.png
    to_guide out/guide/pages
    to_guide out/guide/task
    du -ch docs/guide/pictures/*.png | tail -n 1
}
