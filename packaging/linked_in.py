"""Finds out from the linker's maps and the compiler's records what others' code is in the files that ship, and puts the
licences beside them.

linked_in.py BUILD OUTPUT TARGET=FILE...

A package that is not in the table stops the work: somebody has to read its licence first.
"""
import pathlib
import re
import subprocess
import sys

# Debian package, name under which its licence ships, what it is and under which terms.
KNOWN = (
    (r"g(\+\+|cc)-mingw-w64-.*", "GCC runtime", "GPL 3 or later with the GCC Runtime Library Exception 3.1, which leaves the "
     "terms of a program that it is linked into alone"),
    (r"mingw-w64-(common|.*-dev)", "mingw-w64 runtime and winpthreads", "Zope Public License 2.1, MIT and other permissive terms"),
    (r"libasio-dev", "Asio", "Boost Software License 1.0"),
    (r"nlohmann-json3-dev", "JSON for Modern C++", "MIT"),
    (r"libvalijson-dev", "valijson", "BSD 2-clause"),
    (r"libcli11-dev", "CLI11", "BSD 3-clause"),
)
INSTALLER = ("nsis", "NSIS", "zlib; its LZMA decompressor Common Public License 1.0 with a special exception")
GPL = pathlib.Path("/usr/share/common-licenses/GPL-3")


def from_map(path):
    """Archives of which a member was taken, and the start-up objects."""
    text = path.read_text(encoding="utf-8", errors="replace")
    found = re.findall(r"^(/\S+\.a)\(", text, re.M) + re.findall(r"^LOAD (/\S+\.o)$", text, re.M)
    return {str(pathlib.Path(name).resolve()) for name in found}


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def from_headers(build, target):
    inputs = run("ninja", "-C", build, "-t", "inputs", target).split("\n")
    objects = [name for name in inputs if name.endswith(".obj")]
    text = run("ninja", "-C", build, "-t", "deps", *objects)
    names = {line.strip() for line in text.splitlines() if line.startswith("    ")}
    resolved = {str((pathlib.Path(build) / name).resolve()) for name in names}
    return {name for name in resolved if name.startswith("/usr/")}


def packages_of(files):
    owners = run("dpkg", "-S", *sorted(files))
    return {line.split(": ")[0].split(":")[0] for line in owners.splitlines()}


def known(package):
    for pattern, name, terms in KNOWN:
        if re.fullmatch(pattern, package):
            return name, terms
    sys.exit(f"{package} is in a file that ships, and nobody has said under which terms")


def version(package):
    return run("dpkg-query", "-W", "-f=${Version}", package)


def write(path, text):
    path.write_text("\r\n".join(text.splitlines()) + "\r\n", encoding="utf-8", newline="")


def copy_licence(package, name, output):
    write(output / f"{name}.txt", pathlib.Path(f"/usr/share/doc/{package}/copyright").read_text(encoding="utf-8"))


def collect(build, targets):
    """Name to (package, terms, files that hold some of it)."""
    found = {}
    for target, file in targets:
        files = from_map(pathlib.Path(build) / "bin" / f"{file}.map") | from_headers(build, target)
        for package in sorted(packages_of(files)):
            name, terms = known(package)
            found.setdefault(name, (package, terms, []))
            if file not in found[name][2]:
                found[name][2].append(file)
    return found


def main(build, output, *targets):
    output = pathlib.Path(output)
    output.mkdir(parents=True)
    lines = ["What else is in the files of this package, and under which terms.", ""]
    for name, (package, terms, files) in sorted(collect(build, [t.split("=") for t in targets]).items()):
        copy_licence(package, name, output)
        lines += [f"{name} (Debian {package} {version(package)})", f"    in {', '.join(files)}", f"    {terms}", ""]
    package, name, terms = INSTALLER
    copy_licence(package, name, output)
    lines += [f"{name} (Debian {package} {version(package)})", "    in the installer and the uninstaller alone", f"    {terms}", "",
              "Each text is Debian's record of the whole source package, files that are not in here among them. GPL-3.txt is the",
              "licence that the record of the GCC runtime refers to."]
    write(output / "README.txt", "\n".join(lines))
    write(output / "GPL-3.txt", GPL.read_text(encoding="utf-8"))


main(*sys.argv[1:])
