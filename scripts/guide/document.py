"""The printed guide: title page, contents with page numbers, a chapter a task, bookmarks, header and footer."""
import html
from pathlib import Path
from xml.etree import ElementTree

from PIL import Image as Picture
from reportlab.lib import colors
from reportlab.lib.pagesizes import A4
from reportlab.lib.styles import ParagraphStyle
from reportlab.lib.units import mm
from reportlab.pdfbase import pdfmetrics
from reportlab.pdfbase.ttfonts import TTFont
from reportlab.platypus import (BaseDocTemplate, Frame, Image, KeepTogether, ListFlowable, ListItem, NextPageTemplate,
                                PageBreak, PageTemplate, Paragraph, Spacer, Table, TableStyle)
from reportlab.platypus.tableofcontents import TableOfContents

FONTS = Path("/usr/share/fonts/truetype/liberation")
INK = colors.HexColor("#1a1a1a")
ACCENT = colors.HexColor("#1f4e79")
SHADE = colors.HexColor("#eef3f8")
RULE = colors.HexColor("#b8c4d0")
DIM = colors.HexColor("#555555")
WIDTH = A4[0] - 44 * mm
SCREEN_DPI = 172  # a window of the editor leaves room for the text that speaks of it


def register_fonts():
    for family, stem in (("Text", "LiberationSans"), ("Mono", "LiberationMono")):
        names = {style: f"{family}-{style}" for style in ("Regular", "Bold", "Italic", "BoldItalic")}
        for style, name in names.items():
            pdfmetrics.registerFont(TTFont(name, str(FONTS / f"{stem}-{style}.ttf")))
        pdfmetrics.registerFontFamily(names["Regular"], *names.values())


def style(name, **changes):
    settings = {"fontName": "Text-Regular", "fontSize": 10, "leading": 14, "spaceAfter": 6, "textColor": INK}
    return ParagraphStyle(name, **{**settings, **changes})


def make_styles():
    bold = {"fontName": "Text-Bold", "textColor": ACCENT, "keepWithNext": 1}
    return {
        "title": style("title", fontName="Text-Bold", fontSize=30, leading=36, textColor=ACCENT),
        "subtitle": style("subtitle", fontSize=14, leading=20),
        "h1": style("h1", fontSize=20, leading=25, spaceAfter=10, **bold),
        "h2": style("h2", fontSize=13.5, leading=18, spaceBefore=10, spaceAfter=5, **bold),
        "h3": style("h3", fontSize=11, leading=15, spaceBefore=8, spaceAfter=3, **bold),
        "p": style("p"),
        "li": style("li", spaceAfter=3),
        "dd": style("dd", leftIndent=6 * mm, spaceAfter=8),
        "dt": style("dt", spaceBefore=2, spaceAfter=2, keepWithNext=1),
        "cell": style("cell", fontSize=9, leading=12, spaceAfter=0),
        "head": style("head", fontName="Text-Bold", fontSize=9, leading=12, spaceAfter=0),
        "note": style("note", spaceAfter=0),
        "pre": style("pre", fontName="Mono-Regular", fontSize=8.5, leading=11.5, leftIndent=4 * mm),
        "caption": style("caption", fontName="Text-Italic", fontSize=8.5, leading=11, spaceAfter=10, textColor=DIM),
        "toc0": style("toc0", fontName="Text-Bold", fontSize=10.5, leading=16, spaceAfter=0, spaceBefore=3),
        "toc1": style("toc1", leftIndent=7 * mm, fontSize=9.5, leading=13, spaceAfter=0),
    }


class Chapter(Paragraph):
    """A heading that stands in the contents and among the bookmarks."""

    def __init__(self, text, look, level, key):
        super().__init__(f'<a name="{key}"/>{text}', look)
        self.level, self.key = level, key
        self.plain = "".join(ElementTree.fromstring(f"<x>{text}</x>").itertext())


class Guide(BaseDocTemplate):
    """Knows the chapter that a page belongs to, for the header."""

    def __init__(self, file, title, version):
        super().__init__(str(file), pagesize=A4, title=f"{title} {version}", author="OrvOutFormat", subject=title,
                         lang="en", invariant=1, leftMargin=22 * mm, rightMargin=22 * mm)
        self.name, self.version, self.chapter = title, version, ""
        body = Frame(22 * mm, 20 * mm, WIDTH, A4[1] - 44 * mm, leftPadding=0, rightPadding=0, topPadding=0, bottomPadding=0)
        self.addPageTemplates([PageTemplate("cover", [body]), PageTemplate("text", [body], onPageEnd=self.dress)])

    def beforeDocument(self):
        self.chapter = ""

    def afterFlowable(self, flowable):
        if not isinstance(flowable, Chapter):
            return
        if flowable.level == 0:
            self.chapter = flowable.plain
        self.canv.bookmarkPage(flowable.key)
        self.canv.addOutlineEntry(flowable.plain, flowable.key, flowable.level, flowable.level > 0)
        self.notify("TOCEntry", (flowable.level, html.escape(flowable.plain), self.page, flowable.key))

    def dress(self, canvas, _):
        canvas.saveState()
        canvas.setFont("Text-Regular", 8.5)
        canvas.setFillColor(DIM)
        canvas.drawString(22 * mm, A4[1] - 15 * mm, f"{self.name} {self.version}")
        canvas.drawRightString(A4[0] - 22 * mm, A4[1] - 15 * mm, self.chapter)
        canvas.drawRightString(A4[0] - 22 * mm, 11 * mm, str(canvas.getPageNumber()))
        canvas.setStrokeColor(RULE)
        canvas.line(22 * mm, A4[1] - 17 * mm, A4[0] - 22 * mm, A4[1] - 17 * mm)
        canvas.restoreState()


def key_of(page, anchor=""):
    return f"{page}#{anchor}" if anchor else page


def link_key(target, page):
    """A link of the source, "save.md#retries" or "#retries", as the name of a place in the document."""
    name, _, anchor = target.partition("#")
    return key_of(name.removesuffix(".md") or page, anchor)


class Builder:
    """Turns the element tree of one page into what is set on paper."""

    def __init__(self, styles, pictures):
        self.styles, self.pictures, self.page = styles, pictures, ""

    def inline(self, element):
        """Markup of a paragraph, for the setter of paragraphs."""
        text = html.escape(element.text or "", quote=False)
        for child in element:
            text += self.span(child) + html.escape(child.tail or "", quote=False)
        return text

    def span(self, element):
        inner = self.inline(element)
        match element.tag:
            case "b" | "strong":
                return f"<b>{inner}</b>"
            case "em":
                return f"<i>{inner}</i>"
            case "code":
                return f'<font face="Mono-Regular" size="9">{inner}</font>'
            case "br":
                return "<br/>"
            case "a" if element.get("href"):
                target = element.get("href")
                place = target if "://" in target else "#" + link_key(target, self.page)
                return f'<a href="{html.escape(place)}" color="#1f4e79">{inner}</a>'
            case "span":
                return f'<font color="#7a1f1f">{inner}</font>'
        return inner

    def paragraph(self, element, look="p"):
        return Paragraph(self.inline(element), self.styles[look])

    def block(self, element):
        make = {"h1": self.heading, "h2": self.heading, "h3": self.heading, "p": self.text, "ul": self.list, "ol": self.list,
                "table": self.table, "pre": self.code, "blockquote": self.note, "dl": self.definitions}.get(element.tag)
        if make is None:
            raise ValueError(f"{self.page}: <{element.tag}> has no place on paper")
        return make(element)

    def heading(self, element):
        if element.tag == "h3":
            return [self.paragraph(element, "h3")]
        level = int(element.tag[1]) - 1
        key = key_of(self.page, element.get("id") if level else "")
        return [Chapter(self.inline(element), self.styles[element.tag], level, key)]

    def text(self, element):
        picture = element.find("img")
        if picture is None:
            return [self.paragraph(element)]
        return [self.picture(picture)]

    def picture(self, element):
        file = self.pictures / element.get("src").rsplit("/", 1)[1]
        with Picture.open(file) as image:
            width, height = image.size
        scale = min(72 / SCREEN_DPI, WIDTH / width)
        sides = ("LEFTPADDING", "RIGHTPADDING", "TOPPADDING", "BOTTOMPADDING")
        framed = [("BOX", (0, 0), (-1, -1), 0.5, RULE), *[(side, (0, 0), (-1, -1), 0) for side in sides]]
        shown = Table([[Image(str(file), width * scale, height * scale)]], style=framed, hAlign="LEFT")
        return KeepTogether([shown, Spacer(0, 3), Paragraph(html.escape(element.get("alt")), self.styles["caption"])])

    def list(self, element):
        items = [ListItem(self.item(entry), leftIndent=6 * mm) for entry in element]
        numbered = element.tag == "ol"
        shape = {"bulletType": "1", "bulletFormat": "%s."} if numbered else {"bulletType": "bullet", "start": "•"}
        shape |= {"bulletFontName": "Text-Regular", "bulletFontSize": 10, "leftIndent": 6 * mm}
        return [ListFlowable(items, **shape), Spacer(0, 4)]

    def item(self, entry):
        blocks = [child for child in entry if child.tag in ("p", "ul", "ol", "pre", "blockquote", "table")]
        if not blocks:
            return [self.paragraph(entry, "li")]
        head = ElementTree.Element("p")
        head.text = entry.text
        for child in entry:
            if child.tag in ("p", "ul", "ol", "pre", "blockquote", "table"):
                break
            head.append(child)
        first = [Paragraph(self.inline(head), self.styles["li"])] if (entry.text or "").strip() or len(head) else []
        return first + [flowable for block in blocks for flowable in self.block(block)]

    def table(self, element):
        rows = [list(row) for row in element.iter("tr")]
        head = [[Paragraph(self.inline(cell), self.styles["head"]) for cell in rows[0]]]
        body = [[Paragraph(self.inline(cell), self.styles["cell"]) for cell in row] for row in rows[1:]]
        look = TableStyle([("BACKGROUND", (0, 0), (-1, 0), SHADE), ("LINEBELOW", (0, 0), (-1, -1), 0.4, RULE),
                           ("VALIGN", (0, 0), (-1, -1), "TOP"), ("TOPPADDING", (0, 0), (-1, -1), 2.5),
                           ("BOTTOMPADDING", (0, 0), (-1, -1), 3)])
        return [Table(head + body, colWidths=self.widths(rows), style=look, repeatRows=1, hAlign="LEFT"), Spacer(0, 8)]

    def widths(self, rows):
        """In proportion to what stands in a column, within bounds."""
        longest = [max(len("".join(row[i].itertext())) for row in rows) for i in range(len(rows[0]))]
        weights = [min(max(length, 12), 60) for length in longest]
        total = WIDTH if sum(weights) > 50 else WIDTH * 0.7
        return [total * weight / sum(weights) for weight in weights]

    def code(self, element):
        text = html.escape("".join(element.itertext()).rstrip("\n"), quote=False)
        return [Paragraph(text.replace(" ", "&nbsp;").replace("\n", "<br/>"), self.styles["pre"])]

    def note(self, element):
        inside = [[Paragraph(self.inline(child), self.styles["note"])] for child in element]
        look = [("BACKGROUND", (0, 0), (-1, -1), SHADE), ("LINEBEFORE", (0, 0), (0, -1), 2, ACCENT),
                ("LEFTPADDING", (0, 0), (-1, -1), 8)]
        return [Table(inside, colWidths=[WIDTH], style=look), Spacer(0, 8)]

    def definitions(self, element):
        return [self.paragraph(child, child.tag) for child in element]

    def chapter(self, page):
        self.page = page.name
        return [flowable for element in page.body for flowable in self.block(element)]


def contents(styles, word):
    table = TableOfContents(levelStyles=[styles["toc0"], styles["toc1"]], dotsMinLevel=0)
    return [Paragraph(word, styles["h1"]), table]


def build_document(guide, words, root, file):
    register_fonts()
    styles = make_styles()
    builder = Builder(styles, root / "docs/guide/pictures")
    story = [NextPageTemplate("text"), Spacer(0, 60 * mm), Paragraph(guide.title, styles["title"]),
             Spacer(0, 4 * mm), Paragraph(words["subtitle"], styles["subtitle"]),
             Paragraph(f"{words['version']} {guide.version}", styles["subtitle"]), PageBreak(),
             *contents(styles, words["contents"])]
    for page in guide.pages:
        story += [PageBreak(), *builder.chapter(page)]
    Guide(file, guide.title, guide.version).multiBuild(story)
