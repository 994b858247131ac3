"""The guide's source: pages in Markdown with marks for the product's own texts, made into parsed pages."""
import html
import re
from dataclasses import dataclass, field
from pathlib import Path
from xml.etree import ElementTree

import markdown

TEXT_ROW = re.compile(r'^ORV_TEXT\((\w+), (\d+), "((?:[^"\\]|\\.)*)"\)', re.M)
CATALOGUE_ROW = re.compile(r'\{k(\w+), +\d+, L"(\w+)", +Id::(\w+), +(?:Yes|No), +\{(.*?)\}, +(Yes|No), +(Yes|No)\}')
MARK = re.compile(r"\{\{(\w+)(?: (\w+))?\}\}")
FIRST_NAMED_BYTE = 4096
NUMBER_FORMATS = ("Dec", "Bin", "Hex", "Asc")
LANGUAGES = {"en": 0x0409, "de": 0x0407}


class GuideError(Exception):
    """What is wrong with the source, for whoever wrote it."""


@dataclass
class Page:
    """One task: a file of the source."""

    name: str
    title: str = ""
    keywords: list = field(default_factory=list)
    body: ElementTree.Element = None
    headings: list = field(default_factory=list)  # (id, text) of the second level


@dataclass
class Guide:
    """All pages of one language, and what they quote."""

    language: str
    title: str
    version: str
    pages: list
    quoted: set


def read_texts(root):
    """name -> (number, text) of every text of the product."""
    source = (root / "text/texts.def").read_text(encoding="utf-8")
    return {name: (int(number), text.encode().decode("unicode_escape")) for name, number, text in TEXT_ROW.findall(source)}


def version_of(root):
    return re.search(r"project\(\w+ VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text(encoding="utf-8"))[1]


def caption(text):
    """As it stands on the screen: no mark of an access key, no shortcut behind a tab, nor the colon before a field."""
    return re.sub(r"&(.)", r"\1", text.split("\t")[0]).rstrip("&: ").strip()


class Marks:
    """Replaces {{Id}} by a caption, {{raw Id}} by a message, {{name}} by a table made from the product's sources."""

    def __init__(self, root, words):
        self.root = root
        self.texts = read_texts(root)
        self.words = words
        self.quoted = set()
        self.made = {"version": lambda: version_of(root), "characters": self.characters}
        for category in ("CodeRelated", "Global", "Miscellaneous"):
            self.made["items_" + category] = lambda category=category: self.items(category)

    def text(self, name):
        if name not in self.texts:
            raise GuideError(f"there is no text {name}")
        self.quoted.add(name)
        return self.texts[name][1]

    def replace(self, match):
        first, second = match.groups()
        if second:
            if first != "raw":
                raise GuideError(f"unknown mark {match[0]}")
            return self.message(self.text(second))
        if first in self.made:
            return self.made[first]()
        return f"<b>{html.escape(caption(self.text(first)))}</b>"

    @staticmethod
    def message(text):
        """What a text is joined to begins and ends with a blank: outside the mark-up, where blanks run together."""
        shown = text.strip()
        before, after = text.partition(shown)[::2]
        return f'{before}<span class="message">{html.escape(shown)}</span>{after}'

    def characters(self):
        """All names that stand for a byte, two a row; Ctrl with a letter types the first 26 but a few."""
        names = [(number - FIRST_NAMED_BYTE, name) for name, (number, _) in self.texts.items() if number >= FIRST_NAMED_BYTE]
        cells = [f"`<{self.text(name)}>` | {value} | {value:02X}" for value, name in sorted(names)]
        half = (len(cells) + 1) // 2
        rows = [f"| {cells[i]} | {cells[i + half] if i + half < len(cells) else ' | |'} |" for i in range(half)]
        return "\n".join([self.words["characters"], "|---|---|---|---|---|---|", *rows])

    def items(self, category):
        """One row a type of item, from the product's catalogue."""
        catalogue = (self.root / "model/catalogue.cpp").read_text(encoding="utf-8")
        rows = [self.item(*row[2:]) for row in CATALOGUE_ROW.findall(catalogue) if row[0] == category]
        if not rows:
            raise GuideError(f"no items of the category {category}")
        return "\n".join([self.words["items"], "|---|---|---|", *rows])

    def item(self, text, lengths, device, scale):
        allowed = re.findall(r'L"([^"]*)"', lengths)
        formats = [f"{name} {self.length(rule)}" for name, rule in zip(NUMBER_FORMATS, allowed) if rule]
        also = [self.words[key] for key, value in (("device", device), ("scale", scale)) if value == "Yes"]
        return f"| {self.text(text)} | {'; '.join(formats) or '–'} | {', '.join(also) or '–'} |"

    def length(self, rule):
        return self.words["any"] if rule == "*" else rule.replace("..", "–").replace(",", ", ")


def read_words(folder):
    """The few words that the made tables need, "name = text" a line."""
    lines = (folder / "words.txt").read_text(encoding="utf-8").splitlines()
    return dict(line.split(" = ", 1) for line in lines if " = " in line)


def parse_page(source, marks, name):
    """One page as an element tree; its links and pictures are still as written."""
    try:
        text = MARK.sub(marks.replace, source)
    except GuideError as error:
        raise GuideError(f"{name}: {error}") from error
    converter = markdown.Markdown(extensions=["meta", "tables", "sane_lists", "attr_list", "toc", "def_list", "fenced_code"])
    try:
        body = ElementTree.fromstring(f"<body>{converter.convert(text)}</body>")
    except ElementTree.ParseError as error:
        raise GuideError(f"{name}: {error}") from error
    title = body.find("h1")
    if title is None:
        raise GuideError(f"{name}: no title")
    keywords = [word.strip() for line in converter.Meta.get("keywords", []) for word in line.split(";") if word.strip()]
    headings = [(heading.get("id"), "".join(heading.itertext())) for heading in body.iter("h2")]
    return Page(name, "".join(title.itertext()), keywords, body, headings)


def read_guide(root, language):
    folder = root / "docs/guide" / language
    words = read_words(folder)
    marks = Marks(root, words)
    names = (folder / "order.txt").read_text(encoding="utf-8").split()
    left_out = {path.stem for path in folder.glob("*.md")} - set(names)
    if left_out:
        raise GuideError(f"not in the order: {', '.join(sorted(left_out))}")
    pages = [parse_page((folder / f"{name}.md").read_text(encoding="utf-8"), marks, name) for name in names]
    return Guide(language, words["title"], version_of(root), pages, marks.quoted)
