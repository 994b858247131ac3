# Sourced by ./dev: the window with every widget, worked from outside its process with real keys and a real pointer.

GALLERY_SAID=out/gallery.txt

# tries COMMAND...: polls, so that a slow machine only takes longer.
tries() {
    local try
    for try in {1..300}; do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}

said_since() { tail -n +"$(($1 + 1))" "$GALLERY_SAID"; }
says() { said_since "$1" | grep -qxF -- "$2"; }
has_focus() { [[ $(grep '^focus ' "$GALLERY_SAID" | tail -n 1) == "focus $1" ]]; }

# mark: what is said from here on belongs to the next step.
mark() { GALLERY_MARK=$(wc -l <"$GALLERY_SAID"); }

# expect NAME LINE: one case of the log.
expect() {
    if tries says "$GALLERY_MARK" "$2"; then
        echo "ok gallery: $1"
    else
        echo "not ok gallery: $1, no \"$2\" but: $(said_since "$GALLERY_MARK" | tr '\n' ';')"
    fi
}

start_gallery() {
    : >"$GALLERY_SAID"
    timeout 300 wine build/win64/bin/orv_gallery.exe >"$GALLERY_SAID" 2>/dev/null </dev/null &
    GALLERY_PID=$!
    tries says 0 ready && return 0
    echo "not ok gallery: no window came up"
    kill "$GALLERY_PID" 2>/dev/null
    return 1
}

# Nobody manages the windows: keys go where the pointer is.
stop_gallery() {
    local status=0
    place window
    xdotool mousemove $((X + W - 5)) $((Y + H - 5)) key alt+F4
    tries says 0 closed || kill "$GALLERY_PID" 2>/dev/null
    wait "$GALLERY_PID" || status=$?
    return "$status"
}

# place NAME: sets X Y W H, on the screen.
place() { read -r X Y W H < <(sed -n "s/^at $1 //p" "$GALLERY_SAID"); }

click_on() {
    place "$1"
    xdotool mousemove $((X + W / 2)) $((Y + H / 2)) click 1
}

# pull X Y X Y: the pointer goes down, and its way in small steps; it stays down.
pull() {
    local step
    xdotool mousemove "$1" "$2" mousedown 1
    for step in {1..10}; do
        xdotool mousemove $(($1 + ($3 - $1) * step / 10)) $(($2 + ($4 - $2) * step / 10))
        sleep 0.03
    done
}

# pull_row ROW BORDER, pull_item KEY BORDER: to the border above a row of the list.
pull_row() {
    place pls.1
    pull $((X + W / 2)) $((Y + H * ($1 - 1) + H / 2)) $((X + W / 3)) $((Y + H * ($2 - 1)))
}

pull_item() {
    local from_x from_y
    place "tbrItems.$1"
    from_x=$((X + W / 2)) from_y=$((Y + H / 2))
    place pls.1
    pull "$from_x" "$from_y" $((X + W / 3)) $((Y + H * ($2 - 1)))
}

check_typing() {
    click_on mbeText
    tries has_focus mbeText
    mark
    xdotool key shift+a space shift+b Return
    expect "typed characters, a space and Return are bytes" "change mbeText 41 20 42 0D"
    mark
    xdotool key shift+Left shift+Left Delete
    expect "the selection goes from token to token" "change mbeText 41 20"
    mark
    xdotool key ctrl+a ctrl+c End ctrl+v
    expect "copied and pasted bytes" "change mbeText 41 20 41 20"
    mark
    xdotool key alt+w
    expect "an access key" "check 0"
    click_on numLength
    tries has_focus numLength
    mark
    xdotool key Up
    expect "an arrow counts up" "number 13"
}

check_dragging() {
    mark
    pull_item Checksum 3
    xdotool mouseup 1
    expect "dropped from the palette" "drop Checksum 2"
    mark
    pull_row 1 4
    xdotool mouseup 1
    expect "dragged within the list" "move 1 4"
}

# The same ways as above, so that only Escape can be the reason why nothing comes of them.
check_escape() {
    mark
    pull_item Checksum 3
    xdotool key Escape mouseup 1
    pull_row 2 5
    xdotool key Escape mouseup 1
    xdotool key Delete
    expect "Delete takes the row that was pressed" "delete 2"
    if said_since "$GALLERY_MARK" | grep -qE '^(drop|move|take) '; then
        echo "not ok gallery: Escape ends a drag: $(said_since "$GALLERY_MARK" | tr '\n' ';')"
    else
        echo "ok gallery: Escape ends a drag"
    fi
    mark
    xdotool key alt+Down
    expect "Alt+Down puts the row below the next" "move 2 4"
}

check_gallery() {
    local status=0
    start_gallery || return 0
    check_typing
    check_dragging
    check_escape
    stop_gallery || status=$?
    echo "$([[ $status -eq 0 ]] && echo ok || echo not ok) gallery: closed with $status"
}

# Two pictures alike: nothing is being drawn any more.
is_still() {
    import -window root -crop "${W}x$H+$X+$Y" +repage "$1.new.png"
    local alike=1
    [[ -f $1 ]] && cmp -s "$1" "$1.new.png" && alike=0
    mv "$1.new.png" "$1"
    return "$alike"
}

# On a screen of its own: twice the usual size needs more room than the tests have.
gallery_shots() {
    local folder=out/shots/gallery dpi screen
    rm -rf "$folder" out/gallery-display
    mkdir -p "$folder"
    Xvfb -displayfd 3 -screen 0 2560x1800x24 -nolisten tcp 3>out/gallery-display >/dev/null 2>&1 &
    screen=$!
    tries test -s out/gallery-display
    local -x DISPLAY=":$(cat out/gallery-display)"
    for dpi in 96 144 192; do
        at_dpi "$dpi"
        start_gallery || continue
        place window
        xdotool mousemove $((X + W - 5)) $((Y + H - 5))
        tries is_still "$folder/$dpi-dpi.png" || echo "The gallery at $dpi dpi does not come to rest" >&2
        stop_gallery || true
    done
    at_dpi 96
    kill "$screen"
    contact_sheet "$folder/pictures.png"
}

# Every picture in both sizes, on what lies behind it in a list.
contact_sheet() {
    local file name font pictures=()
    font=$(fc-match -f '%{file}' sans)
    for file in addon/resources/pictures/*32.bmp; do
        name=$(basename "$file" 32.bmp)
        pictures+=(-label "$name" "addon/resources/pictures/$name.bmp" -label "" "$file")
    done
    montage -background white ${font:+-font "$font"} -pointsize 8 "${pictures[@]}" -tile 10x -geometry '32x32>+36+4' "$1"
    mogrify -fill white -opaque magenta "$1"
}
