"""usage: tutorial.py BUILD COMPILER ROOT FOLDER -- whoever does what docs/tutorial.md says gets what it shows.

Installs the build below FOLDER, does there what the document says, listing by listing, and compares what the commands
print."""

import os
import pathlib
import re
import shutil
import subprocess
import sys

import quick_build

build, compiler = sys.argv[1:3]
root, home = (pathlib.Path(name).resolve() for name in sys.argv[3:5])
page = root / "docs/tutorial.md"
LEFT_OUT = "…"
KINDS = {"cpp", "xml", "cmake", "text", "json"}


def stop(number, fault):
    sys.exit(f"{page.name}:{number}: {fault}")


def run(command, number, cwd):
    done = subprocess.run(["bash", "-euc", command], cwd=cwd, capture_output=True, text=True, env=environment, timeout=600)
    if done.returncode > 1 or (done.returncode and not command.startswith("corvane check")):
        stop(number, f"{command}\nended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def change(folder, file, what, anchor, listing, number):
    path = folder / file
    if what == "new":
        if path.exists():
            stop(number, f"{file} is there already")
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(listing)
        return
    if not path.exists():
        stop(number, f"there is no {file}")
    if what == "all of it":
        path.write_text(listing)
        return
    lines = path.read_text().splitlines(keepends=True)
    found = [index for index, line in enumerate(lines) if anchor in line]
    if len(found) != 1:
        stop(number, f"{file} has {len(found)} lines with {anchor}")
    begin = found[0] + (what == "below")
    lines[begin:found[0] + 1] = [listing]
    path.write_text("".join(lines))


def shown(output, listing):
    """Whether the lines of the listing stand in the output, in order, with others only where lines are left out."""
    parts = [part.splitlines() for part in re.split(f"^{LEFT_OUT}$\n?", listing, flags=re.M)]
    lines, at = output.splitlines(), 0
    for index, part in enumerate(parts):
        last = len(lines) - len(part)
        starts = [at] if index == 0 else range(at, last + 1) if index < len(parts) - 1 else [last]
        for start in starts:
            if start >= at and lines[start:start + len(part)] == part:
                at = start + len(part)
                break
        else:
            return False
    return True


shutil.rmtree(home, ignore_errors=True)
home.mkdir(parents=True)
environment = {
    "PATH": f"{home}/installed/bin:{os.environ['PATH']}", "HOME": str(home), "CXX": compiler, "QT_QPA_PLATFORM": "offscreen",
    "CMAKE_PREFIX_PATH": f"{home}/installed", "LC_ALL": "C.UTF-8", **quick_build.ENVIRONMENT}
run(f"cmake --install {build} --prefix {home}/installed", 0, root)

folder, instruction, counts = home, None, {}
lines = page.read_text().splitlines()
number = 0
while number < len(lines):
    line = lines[number]
    number += 1
    fence = re.fullmatch(r"```(\w+)", line)
    if not fence:
        if line:
            instruction = re.fullmatch(r"`([^`]+)`, (?:(new|all of it)|(below|instead of) `([^`]+)`):", line)
        continue
    begin = number
    while lines[number] != "```":
        number += 1
    listing = "".join(text + "\n" for text in lines[begin:number])
    number += 1
    kind = fence.group(1)
    counts[kind] = counts.get(kind, 0) + 1
    if kind in KINDS:
        if not instruction:
            stop(begin, "nothing says what this listing is for")
        file, whole, what, anchor = instruction.groups()
        change(folder, file, whole or what, anchor, listing, begin)
    elif kind == "sh":
        # An application on the desktop is closed by whoever looks at it.
        listing = re.sub(r"^(corvane run [^ \n]+)$", r"\1 -- --quit", listing, flags=re.M)
        folder = pathlib.Path(run(listing + "pwd", begin, folder).splitlines()[-1])
    elif kind == "console":
        command, wanted = listing.split("\n", 1)
        output = run(command.removeprefix("$ "), begin, folder)
        if not shown(output, wanted):
            stop(begin, f"expected\n{wanted}but it prints\n{output}")
    else:
        stop(begin, f"nothing is known of listings of {kind}")
    instruction = None
faults = quick_build.compile_alone(home / "garden/build", sorted((home / "garden/services").rglob("*.cpp")), environment)
if faults:
    sys.exit(f"{page.name}: the sources as they are at the end don't compile alone\n{faults}")
if any(counts.get(kind, 0) < 3 for kind in ("cpp", "xml", "sh", "console")):
    sys.exit(f"{page.name} doesn't show enough: {counts}")
