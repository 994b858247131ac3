"""What can be wrong with a guide: dead links, missing pictures, texts that it leaves out, files that the help file lacks."""
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from source import read_texts


def anchors(page):
    return {element.get("id") for element in page.body.iter() if element.get("id")}


def link_faults(guide):
    known = {page.name: anchors(page) for page in guide.pages}
    for page in guide.pages:
        for link in page.body.iter("a"):
            target = link.get("href", "")
            if "://" in target:
                continue
            name, _, anchor = target.partition("#")
            name = name.removesuffix(".md") or page.name
            if name not in known or (anchor and anchor not in known[name]):
                yield f"{guide.language}/{page.name}: dead link {target}"


def picture_faults(guide, root):
    for page in guide.pages:
        for picture in page.body.iter("img"):
            file = root / "docs/guide" / guide.language / picture.get("src")
            if not file.exists():
                yield f"{guide.language}/{page.name}: no picture {picture.get('src')}"
            if not picture.get("alt"):
                yield f"{guide.language}/{page.name}: picture {picture.get('src')} says nothing to who cannot see it"


def bold_faults(guide):
    """What is written in bold by hand looks like a caption and would not follow the product's."""
    for page in guide.pages:
        for bold in page.body.iter("strong"):
            yield f"{guide.language}/{page.name}: \"{''.join(bold.itertext())}\" is bold without being a text of the product"


def source_faults(guide, root):
    faults = [*link_faults(guide), *picture_faults(guide, root), *bold_faults(guide)]
    faults += [f"{guide.language}/{page.name}: no keywords" for page in guide.pages if not page.keywords]
    return faults


def missing_texts(guide, root):
    """Texts of the product that the guide neither quotes nor lists among those that need no word."""
    lines = (root / "docs/guide/unquoted.txt").read_text(encoding="utf-8").splitlines()
    excused = {line.split()[0] for line in lines if line and not line.startswith("#")}
    texts = set(read_texts(root))
    faults = [f"the guide says nothing of the text {name}" for name in sorted(texts - guide.quoted - excused)]
    faults += [f"unquoted.txt: {name} is quoted" for name in sorted(excused & guide.quoted)]
    return faults + [f"unquoted.txt: there is no text {name}" for name in sorted(excused - texts)]


def unused_pictures(guides, root):
    used = {image.get("src").rsplit("/", 1)[1] for guide in guides for page in guide.pages for image in page.body.iter("img")}
    there = {file.name for file in (root / "docs/guide/pictures").glob("*.png")}
    return [f"no page shows pictures/{name}" for name in sorted(there - used)]


def listed(file):
    run = subprocess.run(["chmls", "list", str(file)], capture_output=True, text=True, check=True)
    return {match[1] for match in re.finditer(r"(/\S+)$", run.stdout, re.M)}


def unpacked(file, folder):
    subprocess.run(["chmls", "extractall", str(file), str(folder)], capture_output=True, text=True, check=True)
    return {"/" + path.relative_to(folder).as_posix() for path in Path(folder).rglob("*") if path.is_file()}


def help_faults(guide, file):
    """Looks into the compiled file itself."""
    faults = []
    folder = Path(tempfile.mkdtemp())
    try:
        inside = {name.lower() for name in listed(file)}
        out = unpacked(file, folder)
        for page in guide.pages:
            wanted = [f"/{page.name}.html"]
            wanted += [f"/pictures/{image.get('src').rsplit('/', 1)[1]}" for image in page.body.iter("img")]
            faults += [f"{file.name}: {name} is not inside" for name in wanted if name.lower() not in inside]
            faults += [f"{file.name}: {name} does not unpack" for name in wanted if name not in out]
        for name in ("guide.hhc", "guide.hhk"):
            text = (folder / name).read_text(encoding="cp1252")
            for target in re.findall(r'name="Local" value="([^"#]+)', text):
                if f"/{target}" not in out:
                    faults.append(f"{file.name}: {name} leads to {target}, which is not inside")
        if len(re.findall(r'name="Local"', (folder / "guide.hhc").read_text(encoding="cp1252"))) < len(guide.pages):
            faults.append(f"{file.name}: the table of contents lacks a page")
    finally:
        shutil.rmtree(folder)
    return faults
