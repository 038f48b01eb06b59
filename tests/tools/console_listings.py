"""usage: console_listings.py CORVANE ROOT FOLDER [--write] -- what the docs show of the tool is what it prints.

A listing of the docs marked "console" holds commands, lines that begin with "$ corvane ", each with its output below.
They are run in FOLDER. With --write the listings take what is printed."""

import pathlib
import re
import shlex
import subprocess
import sys

corvane, root, folder = (pathlib.Path(name).resolve() for name in sys.argv[1:4])
write = "--write" in sys.argv
found = different = 0


def run(command):
    arguments = shlex.split(command)
    assert arguments[0] == "corvane", command
    result = subprocess.run([corvane, *arguments[1:]], cwd=folder, capture_output=True, text=True)
    return result.stdout


def checked(match):
    global found, different
    found += 1
    listing = ""
    for command in re.findall(r"^\$ (corvane .*)$", match.group(1), re.M):
        listing += f"$ {command}\n{run(command)}"
    if listing != match.group(1):
        different += 1
        if not write:
            print(f"{page}: expected\n{match.group(1)}but it prints\n{listing}")
    return f"```console\n{listing}```"


for page in sorted((root / "docs").glob("*.md")):
    if page.name == "tutorial.md":  # has an application of its own, which tutorial.py makes
        continue
    text = page.read_text()
    new = re.sub(r"```console\n(.*?)```", checked, text, flags=re.S)
    if write and new != text:
        page.write_text(new)
if not found:
    sys.exit("there are no such listings")
sys.exit(1 if different and not write else 0)
