"""usage: check_listings.py ROOT [PAGE EXAMPLE] -- the listings of docs/first-service.md, or of another page with the folder
of its example, are the files that they are linked to.

A listing of code (cpp, python, json, xml, cmake, text) stands below a line that links the file shown. Every file of the example is
shown."""

import pathlib
import re
import sys

PAGE, EXAMPLE = sys.argv[2:4] or ("docs/first-service.md", "examples/first-service")


def faults_in(root):
    faults, shown, link = [], set(), None
    docs = (root / PAGE).parent
    lines = (root / PAGE).read_text().splitlines()
    number = 0
    while number < len(lines):
        line = lines[number]
        number += 1
        fence = re.fullmatch(r"```(\w*)", line)
        if not fence:
            if line:
                match = re.search(r"\]\((" + EXAMPLE + r"/[^)]+)\)", line)
                link = match and match.group(1)
            continue
        begin = number
        while number < len(lines) and lines[number] != "```":
            number += 1
        listing = "\n".join(lines[begin:number]) + "\n"
        number += 1
        if fence.group(1) not in ("cpp", "python", "json", "xml", "cmake", "text"):
            continue
        if not link:
            faults.append(f"{PAGE}:{begin}: no file is linked above this listing")
        elif not (docs / link).is_file():
            faults.append(f"{PAGE}:{begin}: there is no file {link}")
        elif (docs / link).read_text() != listing:
            faults.append(f"{PAGE}:{begin}: the listing differs from {link}")
        shown.add(link)
    for file in sorted((docs / EXAMPLE).rglob("*")):
        name = file.relative_to(docs).as_posix()
        if file.is_file() and name not in shown:
            faults.append(f"{PAGE}: {name} isn't shown")
    return faults


if __name__ == "__main__":
    found = faults_in(pathlib.Path(sys.argv[1]))
    for fault in found:
        print(fault)
    sys.exit(1 if found else 0)
