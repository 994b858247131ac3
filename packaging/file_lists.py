"""Turns the files to be installed into lists for the installer, so that what is removed is what was put there.

file_lists.py FOLDER OUTPUT
"""
import pathlib
import sys


def windows(path):
    return "$INSTDIR\\" + str(path).replace("/", "\\")


def install(root, files):
    folder = None
    for file in files:
        if file.parent != folder:
            folder = file.parent
            yield f'SetOutPath "{windows(folder) if folder.parts else "$INSTDIR"}"'
        yield f'File "{root / file}"'


def macro(name, lines):
    return [f"!macro {name}", *("  " + line for line in lines), "!macroend"]


def main(source, output):
    root = pathlib.Path(source).resolve()
    files = sorted((path.relative_to(root) for path in root.rglob("*") if path.is_file()), key=lambda p: (str(p.parent), p))
    folders = sorted((path.relative_to(root) for path in root.rglob("*") if path.is_dir()), reverse=True)
    lines = macro("InstallFiles", install(root, files))
    lines += macro("CheckFiles", (f'!insertmacro CheckFree "{windows(file)}"' for file in files))
    lines += macro("DeleteFiles", (f'Delete "{windows(file)}"' for file in files))
    # The innermost first; one that is not empty stays.
    lines += macro("RemoveFolders", (f'RMDir "{windows(folder)}"' for folder in folders))
    pathlib.Path(output).write_text("\n".join(lines) + "\n", encoding="utf-8")


main(*sys.argv[1:])
