"""usage: command_line.py CORVANE ROOT -- exit codes, output and files of the tool's commands, also the second time.

Each case has the application of tests/author/shop to itself, which has one warning and one note."""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

corvane, root = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
shop = root / "tests/author/shop/Services"
CLEAN, FINDINGS, USAGE, FAILED = range(4)


def run(status, *words, has=(), lacks=(), given="", **variables):
    """Both streams, in the folder of the application, after a look at the status and at what they say."""
    done = subprocess.run([corvane, *words], input=given, capture_output=True, text=True, timeout=120,
                          env={**os.environ, "NO_COLOR": "1", **variables})
    text = done.stdout + done.stderr
    told = f"corvane {' '.join(map(str, words))} ended with {done.returncode}, not {status}:\n{text}"
    assert done.returncode == status, told
    for part in has:
        assert part in text, f"no {part!r} in what {told}"
    for part in lacks:
        assert part not in text, f"{part!r} in what {told}"
    return done.stdout


def write(path, text):
    path = pathlib.Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def change(file, before, after):
    text = pathlib.Path(file).read_text()
    assert text.count(before) == 1, (file, before)
    write(file, text.replace(before, after))


def files(folder="."):
    return {str(path): path.read_bytes() for path in pathlib.Path(folder).rglob("*") if path.is_file()}


def unchanged(status, *words, **expected):
    before = files()
    said = run(status, *words, **expected)
    assert files() == before, f"{words} has written {sorted(set(files().items()) ^ set(before.items()))}"
    return said


def severities_decide():
    run(FINDINGS, "check", ".", has=["0 errors, 1 warning, 1 note"])
    run(CLEAN, "check", ".", "--fail-on", "error", has=["[missing-image]"])
    pathlib.Path("Images").mkdir()
    shutil.copy(root / "samples/studies/app/Images/GenericExplorerItem.ico", "Images")
    for option in ("warning", "error"):
        run(CLEAN, "check", ".", "--fail-on", option, has=["[missing-window-list]"], lacks=["warning:"])
    change("Services/Shop.xml", 'Name="Sell" Action', 'Name="Sell" Acton')
    run(FINDINGS, "check", ".", "--fail-on", "error", has=["Services/Shop.xml:4:"])
    run(FAILED, "check", "nowhere")
    run(USAGE, "check")
    run(USAGE, "check", "--explain", "missing-imag", has=['did you mean "missing-image"?'])


def notes_have_places():
    shutil.copy("Services/Shop.xml", "Services/Twin.xml")
    change("Services/Twin.xml", '<Service Name="Shop"', '<Service Name="Twin"')
    text = run(FINDINGS, "check", ".")
    notes = [line for line in text.splitlines() if ": note: " in line and not line.endswith("]")]
    assert notes and all(line.startswith("./Services/") and line.split(":")[1].isdigit() for line in notes), text
    findings = json.loads(run(FINDINGS, "check", ".", "--json"))["findings"]
    results = json.loads(run(FINDINGS, "check", ".", "--sarif"))["runs"][0]["results"]
    for finding, result in zip(findings, results, strict=True):
        places = [(note["line"], note["text"][1:]) for note in finding["notes"]]
        related = [(at["physicalLocation"]["region"]["startLine"], at["message"]["text"][1:])
                   for at in result.get("relatedLocations", [])]
        assert places == related, (finding, result)


def cures_keep_what_was():
    for time, slip in enumerate(("Flase", "Treu"), 1):
        change("Services/Shop.xml", 'IsModal="True"' if time == 1 else 'IsModal="False"', f'IsModal="{slip}"')
        before = pathlib.Path("Services/Shop.xml").read_bytes()
        unchanged(FINDINGS, "check", ".", "--fix", "--dry-run", has=[f'-    <Window Name="SealWindow" Type="Dialog" IsModal="{slip}"'])
        run(FINDINGS, "check", ".", "--fix", "--yes", has=["changed 1 file;", "[missing-image]"], lacks=["[bad-value]"])
        assert pathlib.Path("Services/Shop.xml.bak" + ("" if time == 1 else "2")).read_bytes() == before, time
    assert slip not in pathlib.Path("Services/Shop.xml.bak").read_text(), "the first one is as it was"
    unchanged(FINDINGS, "check", ".", "--fix", has=["nothing to fix"])


def unknown_names_are_usage():
    run(CLEAN, "explain", ".", "File.Sell", has=["calls OnSell"])
    run(USAGE, "explain", ".", "File.Sel", has=['did you mean "File.Sell"'])
    run(USAGE, "inspct", has=['did you mean "inspect"?'])


def steps_count():
    def inspect(status, *steps, **expected):
        write("steps.txt", "\n".join(steps) + "\n")
        return run(status, "inspect", ".", "--stand-ins", "--steps", "steps.txt", **expected)

    inspect(CLEAN, "click File.Sell", "expect tools[File.Sell].visible true")
    inspect(FINDINGS, "expect tools[File.Sell].visible false", has=["steps.txt:1: error: expected tools[File.Sell].visible"])
    run(FAILED, "inspect", ".", "--steps", "none.txt", has=["none.txt"])
    change("Services/Shop.xml", '"Sell" Path="File"', '"Sell" Path="None.Where"')
    inspect(FAILED, "click File.Sell", "expect failure.number 91")
    inspect(FINDINGS, "expect failure null")


def outlines_are_shown_first():
    outline = run(CLEAN, "arrange", ".")
    unchanged(CLEAN, "arrange", ".", "-", given=outline, has=["nothing to change"])
    for time in (1, 2):
        lines = run(CLEAN, "arrange", ".").splitlines(True)
        sell, name = (next(i for i, line in enumerate(lines) if f"File.{entry} " in line) for entry in ("Sell", "Name"))
        lines[sell], lines[name] = lines[name], lines[sell]
        swapped = "".join(lines)
        unchanged(CLEAN, "arrange", ".", "-", "--dry-run", given=swapped, has=["--- ./Services/Shop.xml"])
        before = pathlib.Path("Services/Shop.xml").read_bytes()
        run(CLEAN, "arrange", ".", "-", given=swapped, has=["changed 1 file;"])
        assert pathlib.Path("Services/Shop.xml.bak" + ("" if time == 1 else "2")).read_bytes() == before, time
    unchanged(FAILED, "arrange", ".", "-", given=outline.replace("File.Sell", "File.Gone"))


def catalogues_are_checked():
    run(USAGE, "translate", ".", has=["holds no catalogue yet"])
    run(USAGE, "translate", ".", "--language", "german", has=['"german" isn\'t a language'])
    run(CLEAN, "translate", ".", "--language", "de", "--language", "fr")
    unchanged(FINDINGS, "translate", ".", "--check")
    for language in ("fr", "de"):  # both have to be done
        catalogue = pathlib.Path(f"Services/translations/{language}.po")
        head, *messages = catalogue.read_text().split("\n\n")
        write(catalogue, "\n\n".join([head, *(message.replace('msgstr ""', 'msgstr "x"') for message in messages)]))
        unchanged(CLEAN if language == "de" else FINDINGS, "translate", ".", "--check")
    # The same text elsewhere is filled in, and still has to be written.
    change("Services/Shop.xml", "</Menus>\n  <Explorer",
           '<MenuItem Type="MenuItem" ActionItem="Sell" Path="File" PositionOrder="50" Caption="Name"/></Menus>\n  <Explorer')
    unchanged(FINDINGS, "translate", ".", "--check", has=["1 new (1 as the same text elsewhere)"])
    run(CLEAN, "translate", ".")
    unchanged(CLEAN, "translate", ".", "--check")
    write("Services/translations/de.po", "msgid broken\n")
    unchanged(FAILED, "translate", ".", has=["correct ./Services/translations/de.po first"])


def nothing_is_overwritten():
    run(CLEAN, "new", "birds", has=["birds/CMakeLists.txt"])
    unchanged(FAILED, "new", "birds")
    os.chdir("birds")
    for words in (["--page", "Nest", "--service", "Birds", "--service", "Cages"], ["other", "--page", "Nest"], []):
        unchanged(USAGE, "new", *words)
    run(CLEAN, "new", "--page", "Nest")
    unchanged(FAILED, "new", "--page", "Nest")


def packages_are_listed_and_validated():
    pathlib.Path("Services/Shop.xml").unlink()
    unchanged(FAILED, "package", ".", "--prefix", "../out", has=["about.json"])
    about = {"id": "org.corvane.Shop", "name": "Shop", "summary": "Sells", "description": "It sells things.",
             "license": "MIT", "developer": "The shop"}
    kind = {"type": "application/x-shop", "pattern": "*.shop", "comment": "A & B"}
    for key, value in (("type", "shop"), ("pattern", "shop"), ("comment", "two\nlines")):
        write("about.json", json.dumps({**about, "files": [{**kind, key: value}]}))
        unchanged(FAILED, "package", ".", "--prefix", "../out", has=[f'"files" needs a text "{key}"'])
    write("about.json", json.dumps({**about, "files": [kind]}))
    for program in ("desktop-file-validate", "appstreamcli"):
        write(f"tools/{program}", "#!/bin/sh\necho refused >&2\n[ -z \"$REFUSES\" ]\n")
        pathlib.Path(f"tools/{program}").chmod(0o755)
    path = f"{pathlib.Path('tools').resolve()}:{os.environ['PATH']}"
    unchanged(FAILED, "package", ".", "--prefix", "out", PATH=path, has=["inside the application folder"])
    for time in (1, 2):
        listed = run(CLEAN, "package", ".", "--prefix", "../out", PATH=path, lacks=["refused"]).split()
        assert sorted(listed) == sorted(files("../out")), (time, listed)
    entry = pathlib.Path("../out/share/applications/org.corvane.Shop.desktop").read_text()
    assert "\nExec=shop %F\n" in entry and "\nMimeType=application/x-shop;\n" in entry, entry
    assert "<comment>A &amp; B<" in pathlib.Path("../out/share/mime/packages/org.corvane.Shop.xml").read_text()
    run(FINDINGS, "package", ".", "--prefix", "../out", PATH=path, REFUSES="1", has=["desktop-file-validate: refused"])
    change("Services/Framework.xml", 'Name="Exit" Action', 'Name="Exit" Acton')
    run(FINDINGS, "package", ".", "--prefix", "../other", has=["correct these first"])
    assert not pathlib.Path("../other").exists()


failed = 0
for case in (severities_decide, notes_have_places, cures_keep_what_was, unknown_names_are_usage, steps_count,
             outlines_are_shown_first, catalogues_are_checked, nothing_is_overwritten, packages_are_listed_and_validated):
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(shop, f"{folder}/shop/Services")
        os.chdir(f"{folder}/shop")
        shutil.copy(root / "packaging/schema/Service.xdr", "Services")
        try:
            case()
        except (AssertionError, StopIteration) as error:
            failed += 1
            print(f"{case.__name__}: {error}", file=sys.stderr)
        os.chdir("/")
sys.exit(1 if failed else 0)
