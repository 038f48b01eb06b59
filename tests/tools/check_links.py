"""usage: check_links.py ROOT -- every link of the README, the docs and the manuals of samples leads to a file, and to a heading
where it names one; every picture of a manual is shown in it."""

import pathlib
import re
import sys

FENCED = re.compile(r"^```.*?^```", re.S | re.M)
LINK = re.compile(r"\]\((?!https?:|mailto:)([^)#\s]*)(?:#([^)\s]*))?\)")


def anchors_of(page):
    """As hosts of such pages make them from the headings."""
    headings = re.findall(r"^#+ (.*)$", FENCED.sub("", page.read_text()), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def faults_in(root):
    faults = []
    for page in sorted([*root.glob("*.md"), *(root / "docs").glob("*.md")]):
        for name, anchor in LINK.findall(FENCED.sub("", page.read_text())):
            target = page.parent / name if name else page
            if not target.exists():
                faults.append(f"{page.relative_to(root)}: there is no {name}")
            elif anchor and target.suffix == ".md" and anchor not in anchors_of(target):
                faults.append(f"{page.relative_to(root)}: {target.name} has no heading #{anchor}")
    for page in sorted(root.glob("samples/*/app/Help/*.html")):
        text = page.read_text()
        names = re.findall(r'(?:href|src)="([^"]+)"', text)
        faults += [f"{page.relative_to(root)}: there is no {name}" for name in names
                   if f'id="{name[1:]}"' not in text and not (page.parent / name).is_file()]
    for picture in sorted(root.glob("samples/*/app/Help/pictures/*/*.png")):
        shown = f"pictures/{picture.parent.name}/{picture.name}"
        if not any(shown in page.read_text() for page in picture.parents[2].glob("*.html")):
            faults.append(f"no manual shows {picture.relative_to(root)}")
    return faults


if __name__ == "__main__":
    found = faults_in(pathlib.Path(sys.argv[1]))
    for fault in found:
        print(fault)
    sys.exit(1 if found else 0)
