# Sourced by ./dev: what is given to others, under out/package/. The same commit gives the same bytes, but for the compiled
# help, into which its compiler writes the time.

PACKAGE=out/package
PRODUCT_TARGETS=(OrvOutFormat orvhost orvdevice outfmt)
PRODUCT_FILES=(OrvOutFormat.ocx orvhost.exe orvdevice.exe outfmt.exe)
GUIDES=(OrvOutFormat_0409.chm OrvOutFormat_0407.chm "OrvOutFormat user guide.pdf")

project_version() { sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt; }

package_name() { echo "OrvOutFormat-$VERSION-win$1"; }

stage_contracts() {
    local built=build/win$1/addon/com/contracts folder=$2/contracts header
    mkdir -p "$folder"
    cp addon/com/OrvAddon.idl addon/com/OrvOutFormat.idl "$built"/Orv{Addon,OutFormat}.tlb "$folder"
    for header in OrvAddon.h OrvOutFormat.h; do
        # The first line says where the source lay.
        sed 1d "$built/$header" >"$folder/$header"
    done
}

stage_texts() {
    local bits=$1 folder=$2 regsvr32='%SystemRoot%\\System32\\regsvr32'
    [[ $bits -eq 32 ]] && regsvr32='%SystemRoot%\\SysWOW64\\regsvr32'
    sed "s/@VERSION@/$VERSION/g; s/@BITS@/$bits/g; s/@REGSVR32@/$regsvr32/g" packaging/README.txt.in >"$folder/README.txt"
    cp LICENSE "$folder/LICENSE.txt"
    cp CHANGELOG.md SECURITY.md "$folder"
    mkdir -p "$folder/docs" "$folder/samples"
    git ls-files docs/outfmt.md docs/device-protocol.md docs/integration.md docs/identifiers.txt docs/examples |
        xargs cp --parents -t "$folder"
    git ls-files 'samples/*.json' 'samples/*.play' | xargs cp -t "$folder/samples"
    find "$folder" -maxdepth 1 \( -name '*.txt' -o -name '*.md' \) -exec sed -i 's/$/\r/' {} +
    find "$folder/docs" \( -name '*.txt' -o -name '*.md' \) -exec sed -i 's/$/\r/' {} +
}

stage_guides() {
    local guide
    for guide in "${GUIDES[@]}"; do
        cp "build/guide/$guide" "$1"
    done
}

# stage BITS: the folder that becomes zip and installer.
stage() {
    local bits=$1 folder
    folder=$PACKAGE/stage/$(package_name "$1")
    mkdir -p "$folder"
    cp "${PRODUCT_FILES[@]/#/build/win$bits/bin/}" "$folder"
    stage_texts "$bits" "$folder"
    stage_contracts "$bits" "$folder"
    stage_guides "$folder"
    python3 packaging/linked_in.py "build/win$bits" "$folder/licences" \
        OrvOutFormat=OrvOutFormat.ocx orvhost=orvhost.exe orvdevice=orvdevice.exe outfmt=outfmt.exe
    find "$folder" -type f -exec chmod 644 {} + -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
}

make_installer() {
    local bits=$1 folder lists
    folder=$PACKAGE/stage/$(package_name "$1")
    lists=$PACKAGE/stage/lists-$bits
    mkdir -p "$lists"
    python3 packaging/file_lists.py "$folder" "$lists/files.nsh"
    makensis -V2 -WX "-DVERSION=$VERSION" "-DBITS=$bits" "-DSTAGE=$PWD/$folder" "-DLISTS=$PWD/$lists" "-DICON=$PWD/addon/resources/addon.ico" \
        "-DSIZE=$(du -sk --apparent-size "$folder" | cut -f1)" "-DOUTPUT=$PWD/$PACKAGE/$(package_name "$bits")-setup.exe" \
        packaging/OrvOutFormat.nsi
}

# The debug information that was split off the very files that ship.
make_symbols() {
    local folder=$PACKAGE/stage/OrvOutFormat-$VERSION-symbols bits
    for bits in 64 32; do
        mkdir -p "$folder/win$bits"
        cp "${PRODUCT_FILES[@]/#/build/win$bits/bin/}" "$folder/win$bits"
        for file in "${PRODUCT_FILES[@]}"; do
            cp "build/win$bits/bin/$file.debug" "$folder/win$bits"
        done
    done
    cat >"$folder/README.txt" <<'TEXT'
Debug information (DWARF) of the files of the same version. Where an address lies: addr2line -f -C -e FILE.debug ADDRESS.
In gdb: load FILE from here; it finds FILE.debug beside it. The sources' paths begin at the project's folder.
TEXT
    sed -i 's/$/\r/' "$folder/README.txt"
    python3 packaging/make_zip.py "$folder" "$PACKAGE/$(basename "$folder").zip" "$SOURCE_DATE_EPOCH"
}

package() {
    local bits
    VERSION=$(project_version)
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
    export SOURCE_DATE_EPOCH
    rm -rf "$PACKAGE"
    mkdir -p "$PACKAGE"
    for bits in 64 32; do
        stage "$bits"
        python3 packaging/make_zip.py "$PACKAGE/stage/$(package_name "$bits")" "$PACKAGE/$(package_name "$bits").zip" \
            "$SOURCE_DATE_EPOCH"
        make_installer "$bits"
    done
    make_symbols
    (cd "$PACKAGE" && sha256sum -- *.zip *.exe >SHA256SUMS)
    ls -l "$PACKAGE"
}
