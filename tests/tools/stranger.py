"""usage: stranger.py BUILD COMPILER -- what is installed is enough for somebody who has nothing else.

Installs the build into a temporary folder, lets `corvane new` write an application with two services and add a third,
builds it against the installed tree, runs its tests, checks it, and packages it."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

import quick_build

build, compiler = sys.argv[1:]


def run(*command, cwd=None, code=0):
    """What it prints, or of one that fails, what it complains about."""
    done = subprocess.run(command, cwd=cwd, capture_output=True, text=True, env=environment)
    if done.returncode != code:
        sys.exit(f"{' '.join(map(str, command))}\nended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stderr if code == 3 else done.stdout


with tempfile.TemporaryDirectory() as temporary:
    home = pathlib.Path(temporary)
    prefix = home / "installed"
    environment = {"PATH": os.environ["PATH"], "HOME": str(home), "CMAKE_PREFIX_PATH": str(prefix), "CXX": compiler,
                   **quick_build.ENVIRONMENT}
    run("cmake", "--install", build, "--prefix", prefix)
    corvane = prefix / "bin/corvane"

    # As it was written, and with one more service.
    run(corvane, "new", "birds", "--service", "Birds", "--service", "nests", cwd=home)
    birds = home / "birds"
    assert '"birds" is there already' in run(corvane, "new", "birds", cwd=home, code=3)
    run(corvane, "new", "--service", "Fledglings", cwd=birds)
    for taken in ("Birds", "Framework", "window"):  # a service, the shell's own, and its menu
        assert "already" in run(corvane, "new", "--service", taken, cwd=birds, code=3), taken
    for taken in ("file", "test"):
        run(corvane, "new", taken, cwd=home, code=3)
        assert not (home / taken).exists()
    run(corvane, "new", "mine", "--service", "framework", cwd=home, code=3)
    run("cmake", "--preset", "dev", cwd=birds)
    run("cmake", "--build", "--preset", "dev", cwd=birds)
    tests = run("ctest", "--preset", "dev", cwd=birds)
    assert "100% tests passed, 0 tests failed out of 4" in tests, tests
    assert run(corvane, "check", birds / "build/birds", "--plugins") == ""
    # All services have the sources of one template.
    faults = quick_build.compile_alone(birds / "build", sorted((birds / "services/Birds").glob("*.cpp")), environment)
    assert not faults, faults

    # The build links to the definitions: a slip is seen at once, at its place in the sources, and what goes there goes
    # from the build. Catalogues of translations don't get lost in it.
    definition = birds / "app/Services/Fledglings.xml"
    good = definition.read_text()
    definition.write_text(good.replace('Parent="Fledglings"', 'Parent="Fledgling"'))
    found = run(corvane, "check", "build/birds", cwd=birds, code=1)
    assert found.startswith("app/Services/Fledglings.xml:15:"), found
    definition.rename(birds / "app/Services/Young.xml")
    run("cmake", "--build", "--preset", "dev", cwd=birds)
    assert sorted(path.name for path in (birds / "build/birds/Services").glob("*.xml")) == [
        "Birds.xml", "Framework.xml", "Nests.xml", "Young.xml"]
    (birds / "app/Services/Young.xml").write_text(good)
    run(corvane, "translate", "build/birds", "--language", "de", cwd=birds)
    assert (birds / "app/Services/translations/de.po").is_file()

    # Who names the sources is told what to name instead.
    for folder in (".", "app", "build/birds/Services"):
        for command in (("check", folder), ("inspect", folder), ("run", folder), ("explain", folder, "File")):
            if (folder, command[0]) != ("build/birds/Services", "inspect"):
                assert '"build/birds"' in run(corvane, *command, cwd=birds, code=3), command

    # Packed, it is what the desktop's own validators accept, and its launcher finds it.
    packed = home / "packed"
    about = birds / "app/about.json"
    for placeholder, real in (("Your name", "A. Tester"), ("A Corvane application", "Counts birds"),
                              ("Say here in a few sentences what it is good for.", "Counts birds."),
                              ("https://example.org", "https://birds.example")):
        refused = run(corvane, "package", birds / "build/birds", "--prefix", packed, code=3)
        assert "about.json" in refused and "is still" in refused, refused
        about.write_text(about.read_text().replace(placeholder, real))
    environment["SOURCE_DATE_EPOCH"] = "1000000000"
    listed = run(corvane, "package", birds / "build/birds", "--prefix", packed).splitlines()
    there = [str(path) for path in packed.rglob("*") if path.is_file()]
    assert listed == sorted(listed) and sorted(listed) == sorted(there), (listed, there)
    assert {int((packed / path).stat().st_mtime) for path in there} == {1000000000}
    assert 'date="2001-09-09"' in (packed / "share/metainfo/org.example.birds.metainfo.xml").read_text()
    for plugin in packed.rglob("*.so"):
        paths = re.findall(r"\((?:RUN|R)PATH\).*\[(.*)\]", run("readelf", "-d", plugin))
        assert paths == ["$ORIGIN"], (plugin, paths)
    assert str(home) not in "".join(path.read_text() for path in packed.rglob("share/**/*") if path.is_file())
    assert "corvane-desktop" in (packed / "bin/birds").read_text()
    entry = (packed / "share/applications/org.example.birds.desktop").read_text()
    assert "StartupWMClass=org.example.birds\n" in entry, entry
    assert "Exec=birds\n" in entry and "Icon=org.example.birds\n" in entry, entry
    assert (packed / "share/icons/hicolor/scalable/apps/org.example.birds.svg").is_file()
    environment |= {"PATH": f"{prefix}/bin:{os.environ['PATH']}", "QT_QPA_PLATFORM": "offscreen"}
    assert "Item 1" in run(packed / "bin/birds", "--print", "--quit")
    (birds / "build/birds/about.json").write_text("{}")
    run(corvane, "package", birds / "build/birds", "--prefix", packed, code=3)

    # A library of other tools.
    environment["PKG_CONFIG_PATH"] = ":".join(map(str, prefix.rglob("pkgconfig")))
    source = home / "one.cpp"
    source.write_text('#include "corvane/base/Variant.h"\nint main() { return corvane::ToLong("42") == 42 ? 0 : 1; }\n')
    flags = run("pkg-config", "--cflags", "--libs", "corvane").split()
    run(compiler, "-std=c++20", source, *flags, f"-Wl,-rpath,{next(prefix.rglob('libcorvane.so')).parent}", "-o", home / "one")
    run(home / "one")

    # The catalog leads editors to a schema that is there, under the name that new files give it.
    catalog = prefix / "share/corvane/schema/catalog.xml"
    names = {entry.get("name"): entry.get("uri") for entry in xml.etree.ElementTree.parse(catalog).getroot()}
    assert (catalog.parent / names["urn:corvane:service-definition"]).is_file()
    assert 'href="urn:corvane:service-definition"' in (birds / "app/Services/Birds.xml").read_text()

    # A step about nothing that is there is pointed out, and what is mistyped named.
    steps = home / "steps.txt"
    steps.write_text("click Nests.NewNest\nnode 0 Nowhere\n")
    done = subprocess.run([corvane, "inspect", birds / "build/birds", "--steps", steps], capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    assert done.stderr.splitlines() == [
        f'{steps}:1: note: there is no tool "Nests.NewNest"; did you mean "Nests.NewNests"?',
        f'{steps}:2: note: there is no node "Nowhere" in the tree of tab 0'], done.stderr
    steps.write_text("clik File.Exit\n")
    assert 'did you mean "click"?' in run(corvane, "inspect", birds / "build/birds", "--steps", steps, code=3)
    # What is expected counts, too, where the application doesn't come up at all.
    (home / "nothing").mkdir()
    steps.write_text("click File.Exit\nexpect failure null\n")
    assert "76" in run(corvane, "inspect", "nothing", "--steps", steps, cwd=home, code=1)
    done = subprocess.run([corvane, "inspect", "nothing"], cwd=home, capture_output=True, text=True)
    assert done.returncode == 3 and "76" in done.stdout, done
    # A warning is printed; whether it counts can be chosen.
    definition = home / "nothing/Services/Birds.xml"
    definition.parent.mkdir()
    (definition.parent / "Service.xdr").write_bytes((prefix / "share/corvane/schema/Service.xdr").read_bytes())
    definition.write_text('<Service Name="Birds" ProgID="Corvane.Framework" Active="True"><ActionItems>'
                          '<ActionItem Name="Navigation"/><ActionItem Name="Tile" Action="WindowAction" '
                          'PassActionItemParam="True"/></ActionItems></Service>')
    assert "warning" in run(corvane, "check", "nothing", cwd=home, code=1)
    assert "warning" in run(corvane, "check", "nothing", "--fail-on", "error", cwd=home)
    done = subprocess.run([corvane, "chek"], capture_output=True, text=True)
    assert done.returncode == 2 and 'did you mean "check"?' in done.stderr, done.stderr

    # The completion offers what the tool knows.
    completion = prefix / "share/bash-completion/completions/corvane"
    offered = run("bash", "-c", f'. {completion}; COMP_WORDS=({corvane} ch); COMP_CWORD=1; _corvane; echo "${{COMPREPLY[*]}}"')
    assert offered == "check\n", offered
    for command in ("check", "explain", "inspect", "new", "run", "package", "translate"):
        assert command in run(corvane, "--help"), command
        assert f".B corvane {command}" in (prefix / "share/man/man1/corvane.1").read_text(), command
