# Sourced by ./dev: installs what is missing, by package name. Mirrors are now and then caught in mid-update, hence the retries.

install_missing() {
    local package missing=()
    while read -r package; do
        [[ -z $package || $package == \#* ]] && continue
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done <scripts/packages.txt
    [[ ${#missing[@]} -eq 0 ]] && return 0

    local as_root=()
    [[ $EUID -eq 0 ]] || as_root=(sudo)
    echo "Installing: ${missing[*]}"
    local attempt
    for attempt in 1 2 3 4 5; do
        if "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq >out/install.log 2>&1 &&
            "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
                </dev/null >>out/install.log 2>&1; then
            return 0
        fi
        echo "Attempt $attempt failed; trying again in $((attempt * 10)) seconds" >&2
        sleep $((attempt * 10))
    done
    tail -n 20 out/install.log >&2
    echo "Could not install: ${missing[*]}" >&2
    return 1
}
