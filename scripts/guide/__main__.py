"""Builds the guides: python3 scripts/guide [FOLDER]. The document in English, the compiled help in every language."""
import sys
from pathlib import Path

import check
from document import build_document
from help_file import build_help
from source import LANGUAGES, GuideError, read_guide, read_words

ROOT = Path(__file__).resolve().parents[2]
DOCUMENT = "OrvOutFormat user guide.pdf"


def read_all():
    """The guides of all languages; what is wrong with their source comes back beside them."""
    guides = [read_guide(ROOT, language) for language in LANGUAGES]
    faults = [fault for guide in guides for fault in check.source_faults(guide, ROOT)]
    return guides, faults + check.missing_texts(guides[0], ROOT) + check.unused_pictures(guides, ROOT)


def build(guides, out):
    """What was made, and what is wrong with it."""
    out.mkdir(parents=True, exist_ok=True)
    english = guides[0]
    build_document(english, read_words(ROOT / "docs/guide" / english.language), ROOT, out / DOCUMENT)
    made = [build_help(guide, ROOT, out) for guide in guides]
    faults = [fault for guide, file in zip(guides, made) for fault in check.help_faults(guide, file)]
    return [out / DOCUMENT, *made], faults


def main():
    made = []
    try:
        guides, faults = read_all()
        if not faults:
            made, faults = build(guides, Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "build/guide")
    except GuideError as error:
        faults = [str(error)]
    for fault in faults:
        print(f"guide: {fault}", file=sys.stderr)
    if faults:
        return 1
    for file in made:
        print(f"{file.name}: {file.stat().st_size} bytes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
