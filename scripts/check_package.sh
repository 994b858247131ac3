# Sourced by ./dev: installs, uses and removes the packages as a stranger would, in a Wine prefix of their own.
# 32-bit programs do not start there: theirs are looked into.

CHECKED=out/package/checked
INSTALLED='C:\Program Files\OrvOutFormat'
UNINSTALL_KEY='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\OrvOutFormat'

# holds TEXT COMMAND...: one case.
holds() {
    local text=$1
    shift
    if "$@" >"$CHECKED/last.log" 2>&1; then echo "ok $text"; else echo "not ok $text"; tail -n 15 "$CHECKED/last.log"; fi
}

# ends WITH COMMAND...: by its exit code.
ends() {
    local wanted=$1 status=0
    shift
    timeout 120 "$@" </dev/null || status=$?
    [[ $status -eq $wanted ]] || { echo "ended with $status"; return 1; }
}

inside() { echo "$WINEPREFIX/drive_c/${1//\\//}"; }
folder_of_installed() { inside 'Program Files/OrvOutFormat'; }

# The registry's files are written when the last program has ended.
take_snapshot() {
    wineserver -w
    python3 scripts/wine_snapshot.py take "$WINEPREFIX" "$CHECKED/$1.txt"
}

as_before() { python3 scripts/wine_snapshot.py compare "$CHECKED/before.txt" "$CHECKED/$1.txt" "$2"; }

make_control() { ends 77 wine cscript //nologo "$CHECKED_THERE\\make-control.vbs"; }
no_control() { ! make_control; }

install_package() { ends "${1:-0}" wine "$SETUP" /S; }
# In place, so that its end can be waited for. A batch file, because the folder must stand there without quotes.
uninstall_in_place() { ends "$1" wine cmd /c "$CHECKED_THERE\\in-place.cmd"; }

uninstall_package() {
    ends 0 wine "$INSTALLED\\uninstall.exe" /S || return 1
    wineserver -w
}

same_files() {
    diff -r "$PACKAGE/stage/$(package_name 64)" "$(folder_of_installed)" | grep -v '^Only in .*: uninstall.exe$' >"$CHECKED/diff.txt"
    cat "$CHECKED/diff.txt"
    [[ ! -s $CHECKED/diff.txt ]]
}

# The bench host as installed, with the component as registered, on a sample as installed.
play_installed() {
    (cd "$CHECKED" && WINEDEBUG=-all,+loaddll timeout 300 wine "$INSTALLED\\orvhost.exe" "$INSTALLED\\samples\\tiny.json" \
        --play installed.play --level 3 </dev/null >play.txt 2>play.err) || { tail -n 15 "$CHECKED/play.txt"; return 1; }
    tr -d '\r' <"$CHECKED/play.txt" | grep -A1 '^> print host 6' | grep -qx '= 02' || { cat "$CHECKED/play.txt"; return 1; }
    grep -qF 'Loaded L"C:\\Program Files\\OrvOutFormat\\OrvOutFormat.ocx"' "$CHECKED/play.err"
}

# shows_guide LANGUAGE FOUND: in a host of that language the button leads the help viewer to the guide in that one.
shows_guide() {
    (cd "$CHECKED" && timeout 300 wine "$INSTALLED\\orvhost.exe" "$INSTALLED\\samples\\tiny.json" --play guide.play \
        --language "$1" </dev/null) || return 1
    local tries guide="hh.exe $INSTALLED\\OrvOutFormat_$2.chm"
    for tries in {1..50}; do
        ps -eo args | grep -v grep | grep -qF "$guide" && break
        sleep 0.1
    done
    ps -eo args | grep -v grep | grep -F "$guide" || return 1
    wine taskkill /f /im hh.exe
}

says_version() {
    local program
    for program in outfmt orvdevice orvhost; do
        [[ $(wine "$INSTALLED\\$program.exe" --version 2>/dev/null | tr -d '\r') == "$program $VERSION" ]] || { echo "$program"; return 1; }
    done
    wine reg query "$UNINSTALL_KEY" /v DisplayVersion | grep -q "REG_SZ *$VERSION"
}

write_scripts() {
    cat >"$CHECKED/make-control.vbs" <<'TEXT'
Set c = CreateObject("OrvOutFormat.AddOnControl")
If c.GetResult = -1 Then WScript.Quit 77
TEXT
    printf '"%s\\uninstall.exe" /S _?=%s\r\nexit %%errorlevel%%\r\n' "$INSTALLED" "$INSTALLED" >"$CHECKED/in-place.cmd"
    cat >"$CHECKED/installed.play" <<'TEXT'
show
activate
select Format Definition
focus mbeHeader
key Ctrl+A
type <STX>
press cmdApply
print host 6
close
terminate
TEXT
    printf '%s\n' show activate 'press cmdGuide' close terminate >"$CHECKED/guide.play"
}

# The line of the read-me itself, in the folder where it stands.
by_read_me() {
    local line
    line=$(tr -d '\r' <README.txt | sed -n "s|^ *\(%.*regsvr32 $1 *OrvOutFormat.ocx\)$|\1|p" | sed 's|regsvr32|regsvr32 /s|')
    [[ -n $line ]] && ends 0 wine cmd /c "$line"
}

check_zip() {
    python3 -m zipfile -e "$PACKAGE/$(package_name 64).zip" "$WINEPREFIX/drive_c/unpacked"
    local here=$PWD
    cd "$WINEPREFIX/drive_c/unpacked/$(package_name 64)"
    CHECKED=$here/$CHECKED holds "zip: the line of the read-me registers it" by_read_me ''
    CHECKED=$here/$CHECKED holds "zip: the control is made by its name" make_control
    CHECKED=$here/$CHECKED holds "zip: the other line of the read-me undoes it" by_read_me /u
    cd "$here"
    rm -r "$WINEPREFIX/drive_c/unpacked"
    take_snapshot zip
    as_before zip "zip: registry and files are as before"
}

# An earlier system than the component needs.
check_too_old() {
    wine winecfg -v win7
    holds "too old a system: it ends with 2" install_package 2
    wine winecfg -v win10
}

check_use() {
    holds "installer: it ends with 0" install_package
    holds "installer: the files are those of the zip" same_files
    holds "installer: the control is made by its name" make_control
    holds "installer: the installed bench host edits with the installed component" play_installed
    holds "installer: the button Guide opens the installed guide" shows_guide 0409 0409
    holds "installer: in a German host it opens the German one" shows_guide 0407 0407
    holds "installer: in a host of another language it opens the English one" shows_guide 040C 0409
    holds "installer: programs and list of programs say version $VERSION" says_version
}

check_in_use() {
    local host tries
    (cd "$CHECKED" && exec wine "$INSTALLED\\orvhost.exe" "$INSTALLED\\samples\\conveyor.json") >/dev/null 2>&1 </dev/null &
    host=$!
    for tries in {1..200}; do
        grep -q OrvOutFormat.ocx "/proc/$host/maps" 2>/dev/null && break
        sleep 0.1
    done
    holds "in use: installing over ends with 3" install_package 3
    holds "in use: removing ends with 3" uninstall_in_place 3
    holds "in use: the files are all there" same_files
    holds "in use: the registration is there" make_control
    kill "$host"
    wait "$host" 2>/dev/null || true
}

check_over() {
    local own
    own=$(folder_of_installed)/of-the-user.txt
    echo stale >"$(folder_of_installed)/samples/conveyor.json"
    echo mine >"$own"
    holds "over: it ends with 0" install_package
    holds "over: the control is made by its name" make_control
    holds "over: a file of the user's stays" grep -q mine "$own"
    rm -f "$own"
    holds "over: the files are those of the package" same_files
    wine reg add "$UNINSTALL_KEY" /v DisplayVersion /d 99.0.0 /f >/dev/null
    holds "over: a newer version is left alone, with 1" install_package 1
}

check_removal() {
    holds "removal: it ends with 0" uninstall_package
    holds "removal: the control cannot be made any more" no_control
    take_snapshot "$1"
    as_before "$1" "removal: registry and files are as before"
}

# Another program in the place of regsvr32, which fails. Wine takes its own unless told not to.
check_failure() {
    local tool WINEDLLOVERRIDES="$WINEDLLOVERRIDES;regsvr32.exe=n"
    tool=$(inside windows/system32/regsvr32.exe)
    cp -P "$tool" "$CHECKED/regsvr32.exe"
    cp --remove-destination build/win64/bin/orvhost.exe "$tool"
    holds "failed registration: it ends with 4" install_package 4
    cp -P --remove-destination "$CHECKED/regsvr32.exe" "$tool"
    take_snapshot failure
    as_before failure "failed registration: registry and files are as before"
}

# A second copy plays the other word size: its key in the other view, its regsvr32 in the other system folder.
check_side_by_side() {
    local other='C:\other' key='HKLM\Software\Wow6432Node\Microsoft\Windows\CurrentVersion\Uninstall\OrvOutFormat'
    mkdir -p "$(inside other)" "$(inside windows/syswow64)"
    cp build/win64/bin/OrvOutFormat.ocx "$(inside other)"
    cp "$(inside windows/system32/regsvr32.exe)" "$(inside windows/syswow64)"
    wine reg add "$key" /v InstallLocation /d "$other" /f >/dev/null
    install_package
    holds "side by side: removing one" uninstall_package
    holds "side by side: the other is still made by its name" make_control
}

check_installed() {
    write_scripts
    # What the first of them writes for the user is none of the package's doing.
    wine cscript //nologo "$CHECKED_THERE\\make-control.vbs" >/dev/null 2>&1 || true
    wine cmd /c exit >/dev/null 2>&1
    wine winecfg -v win10
    take_snapshot before
    check_zip
    check_too_old
    check_use
    check_in_use
    check_over
    check_removal removed
    check_failure
    check_side_by_side
}

check_package() {
    VERSION=$(project_version)
    export WINEPREFIX=$PWD/build/wine-package
    # Entries of the menu are for Wine; the desktop of the machine is left alone.
    export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winemenubuilder.exe=d"
    CHECKED_THERE=Z:${PWD//\//\\}'\out\package\checked'
    SETUP=$PACKAGE/$(package_name 64)-setup.exe
    rm -rf "$CHECKED"
    mkdir -p "$CHECKED"
    rm -rf "$WINEPREFIX"
    make_prefix
    start_display
    {
        python3 scripts/package_files.py "$PACKAGE" "$VERSION" || echo "not ok packages: ended early"
        check_installed
    } 2>&1 | tee "$CHECKED/package.log"
    wineserver -k 2>/dev/null || true
    rm -rf "$WINEPREFIX"
    ! grep -q '^not ok ' "$CHECKED/package.log" && grep -q '^ok side by side: the other' "$CHECKED/package.log"
}
