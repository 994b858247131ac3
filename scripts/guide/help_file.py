"""The compiled help file: pages as HTML, table of contents, index and project for the compiler, and the compiler's run."""
import html
import shutil
import subprocess
from xml.etree import ElementTree

from source import LANGUAGES

PAGE = """<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01//EN">
<html lang="{language}">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=utf-8">
<meta http-equiv="X-UA-Compatible" content="IE=edge">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="guide.css">
</head>
{body}
</html>
"""
SITEMAP = """<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<html><head><meta name="GENERATOR" content="guide"><!-- Sitemap 1.0 --></head><body>
<ul>
{entries}
</ul>
</body></html>
"""
# The first line must be this comment for viewers that look for it.
PROJECT = """[OPTIONS]
Compatibility=1.1 or later
Compiled file={file}
Contents file=guide.hhc
Index file=guide.hhk
Default topic={start}
Default Window=main
Full-text search=Yes
Language=0x{language:04x}
Title={title}

[WINDOWS]
main="{title}","guide.hhc","guide.hhk","{start}","{start}",,,,,0x63520,250,0x304e,[80,60,1060,760],,,,,,,0

[FILES]
{files}
"""


def code_page(text, language):
    """Contents, index and project are read in the code page of the language."""
    return text.encode("cp1252")


def entry(title, target, indent):
    pad = "  " * indent
    return (f'{pad}<li><object type="text/sitemap"><param name="Name" value="{html.escape(title)}">'
            f'<param name="Local" value="{target}"></object></li>')


def contents(guide):
    lines = []
    for page in guide.pages:
        lines.append(entry(page.title, f"{page.name}.html", 0))
        if page.headings:
            lines.append("<ul>")
            lines += [entry(text, f"{page.name}.html#{anchor}", 1) for anchor, text in page.headings]
            lines.append("</ul>")
    return SITEMAP.format(entries="\n".join(lines))


def index(guide):
    words = sorted(((word, page.name) for page in guide.pages for word in page.keywords), key=lambda pair: pair[0].lower())
    return SITEMAP.format(entries="\n".join(entry(word, f"{name}.html", 0) for word, name in words))


def as_html(page, language):
    """Links go to the pages' files; pictures lie in one folder beside them."""
    body = ElementTree.fromstring(ElementTree.tostring(page.body))
    for link in body.iter("a"):
        target = link.get("href", "")
        if "://" not in target:
            link.set("href", target.replace(".md", ".html"))
    for picture in body.iter("img"):
        picture.set("src", picture.get("src").replace("../pictures/", "pictures/"))
    text = ElementTree.tostring(body, encoding="unicode", method="html")
    return PAGE.format(language=language, title=html.escape(page.title), body=text)


def pictures_of(guide):
    return sorted({image.get("src").rsplit("/", 1)[1] for page in guide.pages for image in page.body.iter("img")})


def write_sources(guide, root, folder, name):
    (folder / "pictures").mkdir(parents=True)
    files = []
    for page in guide.pages:
        (folder / f"{page.name}.html").write_text(as_html(page, guide.language), encoding="utf-8")
        files.append(f"{page.name}.html")
    for picture in pictures_of(guide):
        shutil.copy(root / "docs/guide/pictures" / picture, folder / "pictures" / picture)
        files.append(f"pictures\\{picture}")
    shutil.copy(root / "docs/guide/guide.css", folder)
    files.append("guide.css")
    number = LANGUAGES[guide.language]
    (folder / "guide.hhc").write_bytes(code_page(contents(guide), number))
    (folder / "guide.hhk").write_bytes(code_page(index(guide), number))
    project = PROJECT.format(file=name, start=files[0], language=number, title=guide.title, files="\n".join(files))
    (folder / "guide.hhp").write_bytes(code_page(project.replace("\n", "\r\n"), number))


def build_help(guide, root, out):
    """Answers the compiled file."""
    name = f"OrvOutFormat_{LANGUAGES[guide.language]:04X}.chm"
    folder = out / "html" / guide.language
    shutil.rmtree(folder, ignore_errors=True)
    write_sources(guide, root, folder, name)
    run = subprocess.run(["chmcmd", "guide.hhp"], cwd=folder, capture_output=True, text=True)
    (folder / "compiler.log").write_text(run.stdout + run.stderr, encoding="utf-8")
    made = folder / name
    if run.returncode != 0 or not made.exists():
        raise RuntimeError(f"compiling {name} failed:\n{run.stdout}{run.stderr}")
    return shutil.move(made, out / name)
