"""The checks of includes, links, listings, public headers and translations find what they are there for."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
import check_links  # noqa: E402
import check_listings  # noqa: E402

CHECK_INCLUDES = pathlib.Path(__file__).parents[2] / "scripts/check_includes"
CHECK_PUBLIC_HEADERS = pathlib.Path(__file__).parents[2] / "scripts/check_public_headers"
CHECK_TRANSLATIONS = pathlib.Path(__file__).parents[2] / "scripts/check_translations"
TABLE = """# Modules

| folder | contents | its headers may include |
|---|---|---|
| `corvane/base/` | `Object` | the standard library |
| `corvane/menus/` | `Menu` | `corvane/base/`, `corvane/services/Record.h` |
| `corvane/services/` | `Record` | `corvane/base/` |
| `desktop/bars/` | bars | `corvane/`, `desktop/style/` |
| `desktop/style/` | style | `desktop/custom/` |
| `desktop/custom/` | custom | `desktop/bars/` |
| `samples/notes/` | a sample | `corvane/` |
"""
FILES = ("corvane/base/Object.h", "corvane/menus/Menu.h", "corvane/menus/IMenu.h", "corvane/services/Record.h",
         "corvane/services/Manager.h", "samples/notes/parts/Note.h", "desktop/bars/Bar.h", "desktop/style/Style.h",
         "desktop/custom/Custom.h")


def write(root, name, text):
    (root / name).parent.mkdir(parents=True, exist_ok=True)
    (root / name).write_text(text)


class Includes(unittest.TestCase):
    def output_for(self, name, include, *more):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            write(root, "docs/architecture.md", TABLE)
            for file in FILES:
                write(root, file, "")
            for file, included in ((name, include), *more):
                write(root, file, f'#include <string>\n#include "{included}"\n')
            run = subprocess.run([sys.executable, CHECK_INCLUDES, root], capture_output=True, text=True)
            self.assertEqual(run.returncode, 1 if run.stdout.strip() else 0, run.stderr)
            return run.stdout.strip()

    def test_what_may_be_included(self):
        for name, include in (
            ("corvane/menus/A.h", "corvane/menus/Menu.h"),
            ("corvane/menus/A.h", "corvane/base/Object.h"),
            ("corvane/menus/A.h", "corvane/services/Record.h"),
            ("corvane/base/A.h", "corvane/menus/IMenu.h"),
            ("corvane/base/A.cpp", "corvane/services/Manager.h"),
            ("samples/notes/A.cpp", "Note.h"),
        ):
            self.assertEqual(self.output_for(name, include), "", name)

    def test_what_may_not(self):
        for name, include, fault in (
            ("corvane/base/A.h", "corvane/menus/Menu.h",
             'corvane/base/A.h:2: includes "corvane/menus/Menu.h"; allowed here: corvane/base/'),
            ("corvane/menus/A.h", "corvane/services/Manager.h",
             'corvane/menus/A.h:2: includes "corvane/services/Manager.h"; '
             "allowed here: corvane/menus/, corvane/base/, corvane/services/Record.h"),
            ("corvane/base/A.cpp", "samples/notes/parts/Note.h",
             'corvane/base/A.cpp:2: includes "samples/notes/parts/Note.h"; allowed here: corvane/base/, corvane/'),
            ("corvane/base/A.h", "Object.h", 'corvane/base/A.h:2: there is no file "Object.h" below the root'),
            ("corvane/new/A.h", "corvane/base/Object.h",
             "corvane/new/A.h:1: the table in docs/architecture.md has no row for this file"),
        ):
            self.assertEqual(self.output_for(name, include), fault)


    def test_rings(self):
        arrows = (("desktop/bars/A.h", "desktop/style/Style.h"), ("desktop/style/A.cpp", "desktop/custom/Custom.h"),
                  ("desktop/custom/A.h", "desktop/bars/Bar.h"))
        self.assertEqual(self.output_for(*arrows[0], arrows[1]), "")
        ring = "a ring: desktop/bars/ -> desktop/style/ -> desktop/custom/ -> desktop/bars/"
        self.assertEqual(self.output_for(*arrows[0], *arrows[1:]).splitlines(),
                         [f'{name}:2: includes "{include}", {ring}' for name, include in arrows])


class Listings(unittest.TestCase):
    def faults_for(self, page):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            write(root, "docs/examples/first-service/a.cpp", "int a;\n")
            write(root, "docs/first-service.md", page)
            return check_listings.faults_in(root)

    def test_faults(self):
        link = "The [service](examples/first-service/a.cpp):\n\n"
        missing = "docs/first-service.md: examples/first-service/a.cpp isn't shown"
        for page, faults in (
            (link + "```cpp\nint a;\n```\n", []),
            (link + "```cpp\nint b;\n```\n",
             ["docs/first-service.md:3: the listing differs from examples/first-service/a.cpp"]),
            ("```cpp\nint a;\n```\n", ["docs/first-service.md:1: no file is linked above this listing", missing]),
            (link.replace("a.cpp", "b.cpp") + "```cpp\nint a;\n```\n",
             ["docs/first-service.md:3: there is no file examples/first-service/b.cpp", missing]),
        ):
            self.assertEqual(self.faults_for(page), faults)


class Links(unittest.TestCase):
    def test_faults(self):
        for link, faults in (
            ("[a](docs/a.md#the-one-heading) [b](https://example.org/none)", []),
            ("[a](docs/b.md)", ["README.md: there is no docs/b.md"]),
            ("[a](docs/a.md#another)", ["README.md: a.md has no heading #another"]),
            ("```\n[a](docs/b.md)\n```\n", []),
        ):
            with tempfile.TemporaryDirectory() as folder:
                root = pathlib.Path(folder)
                write(root, "docs/a.md", "# The `one` heading\n")
                write(root, "README.md", link)
                self.assertEqual(check_links.faults_in(root), faults)


class PublicHeaders(unittest.TestCase):
    def faults_for(self, text, sample="", page=""):
        with tempfile.TemporaryDirectory() as folder:
            for name, content in (("packaging/PublicHeaders.cmake", "set(HEADERS # of corvane/C.h\n  corvane/A.h)"),
                                  ("corvane/A.h", f"#pragma once\nnamespace corvane {{\n{text}\n}}\n"),
                                  ("corvane/B.h", ""), ("samples/a.cpp", sample), ("docs/a.md", page)):
                write(pathlib.Path(folder), name, content)
            run = subprocess.run([sys.executable, CHECK_PUBLIC_HEADERS, folder], capture_output=True, text=True)
            self.assertEqual(run.returncode, 1 if run.stdout else 0, run.stderr)
            return run.stdout.splitlines()

    def test_faults(self):
        for text, faults in (
            ('class __attribute__((visibility("default"))) A {\n    void B();\n};', []),
            ("class A {\npublic:\n    int B() const { return b ? 1 : 2; }\n    int b = F(1);\n    virtual void C() = 0;\n};", []),
            ("template <class T>\nT A(T a);\ninline int B() { return 1; }\nstruct C;\nusing D = void (*)(int);", []),
            ("struct A {\n    int B() { return 1; }\n    void C();\n};",
             ["corvane/A.h:3: struct A isn't exported, and declares functions that it doesn't define"]),
            ("// void A();\nvoid B();", ["corvane/A.h:4: isn't exported: void B()"]),
            ('[[gnu::visibility("default")]] void A();\n#include "corvane/B.h"',
             ['corvane/A.h:4: includes "corvane/B.h", which isn\'t public']),
        ):
            self.assertEqual(self.faults_for(text), faults)
        unknown = ' "corvane/B.h" isn\'t installed, so no plug-in can include it'
        sample = '#include "corvane/A.h"\n#include "a.h"\n#include "corvane/B.h"\n'
        self.assertEqual(self.faults_for("", sample, "`corvane/A.h`\n`corvane/B.h`\n"),
                         ["samples/a.cpp:3:" + unknown, "docs/a.md:2:" + unknown])


class Translations(unittest.TestCase):
    def faults_for(self, *entries):
        """Of a catalogue with those messages, each a source, a translation and attributes of the latter."""
        messages = "".join(
            f"<message{' numerus=' + chr(34) + 'yes' + chr(34) if '<numerusform>' in translation else ''}>"
            f"<source>{source}</source><translation {attributes}>{translation}</translation></message>"
            for source, translation, attributes in entries)
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "corvane_xx.ts"
            path.write_text(f"<TS><context><name>C</name>{messages}</context></TS>")
            run = subprocess.run([sys.executable, CHECK_TRANSLATIONS, path], capture_output=True, text=True)
            faults = run.stdout.splitlines()[:-1]
            self.assertEqual(run.returncode, 1 if faults else 0, run.stderr)
            return [fault.removeprefix(f"{path}: ") for fault in faults]

    def test_faults(self):
        for entries, faults in (
            ([("&amp;Open %1", "Ö&amp;ffnen: %1", "")], []),
            ([("Open", "", 'type="unfinished"')], ["C: 'Open' has no finished translation"]),
            ([("Open", "", "")], ["C: 'Open' has no finished translation"]),
            ([("Open", "", 'type="vanished"')], []),
            ([("%1 of %2", "%1 von %1", "")], ["C: '%1 of %2' has other placeholders than '%1 von %1'"]),
            ([("%n rows of %1", "<numerusform>eine Zeile von %1</numerusform><numerusform>%n Zeilen</numerusform>", "")],
             []),
            ([("%n rows", "<numerusform>%1 Zeilen</numerusform>", "")],
             ["C: '%n rows' has other placeholders than '%1 Zeilen'"]),
            ([("&amp;Open", "Öffnen", "")], ["C: '&Open' and 'Öffnen': one has a mnemonic, the other hasn't"]),
            ([("Open…", "Öffnen", "")], ["C: 'Open…' and 'Öffnen' end differently"]),
            ([("&amp;Save", "&amp;Sichern", ""), ("&amp;Close", "&amp;Schließen", "")],
             ["C: '&Save' and '&Close' have the same mnemonic 's'"]),
        ):
            self.assertEqual(self.faults_for(*entries), faults)


if __name__ == "__main__":
    unittest.main()
