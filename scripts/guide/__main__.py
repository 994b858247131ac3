"""Builds the guides: python3 scripts/guide [FOLDER]. The document in English, the compiled help in every language."""
import sys
from pathlib import Path

import check
from document import build_document
from help_file import build_help
from source import LANGUAGES, GuideError, read_guide, read_words

ROOT = Path(__file__).resolve().parents[2]
DOCUMENT = "OrvOutFormat user guide.pdf"


def build(out):
    out.mkdir(parents=True, exist_ok=True)
    made = []
    faults = []
    for language in LANGUAGES:
        guide = read_guide(ROOT, language)
        faults += check.source_faults(guide, ROOT)
        if language == "en":
            faults += check.missing_texts(guide, ROOT)
            build_document(guide, read_words(ROOT / "docs/guide/en"), ROOT, out / DOCUMENT)
            made.append(out / DOCUMENT)
        made.append(build_help(guide, ROOT, out))
        faults += check.help_faults(guide, made[-1])
    return made, faults


def main():
    try:
        made, faults = build(Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "build/guide")
    except GuideError as error:
        made, faults = [], [str(error)]
    for fault in faults:
        print(f"guide: {fault}", file=sys.stderr)
    if faults:
        return 1
    for file in made:
        print(f"{file.name}: {file.stat().st_size} bytes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
