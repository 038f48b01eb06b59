"""The language server, spoken to as an editor does: usage: language_server.py CORVANE SOURCE"""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

CORVANE, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
BASE = """<?xml version="1.0"?>
<Service Name="Base" ProgID="Corvane.Framework" Active="True">
  <ActionItems>
    <ActionItem Name="File"/>
    <ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="True"/>
    <ActionItem Name="Exit" Action="AppExit"/>
  </ActionItems>
  <Menus>
    <MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="100" Caption="#File"/>
    <MenuItem Type="MenuItem" ActionItem="Exit" Path="File" PositionOrder="900" Caption="E#xit"/>
  </Menus>
</Service>
"""
GREETING = """<Service Name="Greeting" ProgID="GreetingSvc.Greeting" Active="True">
  <ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
  <Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Gr\u00fc\u00df #Gott"/></Menus>
  <ExplorerItems>
    <ExplorerItem Name="Plots" Type="Folder" ProgID="GreetingSvc.Plots" Image="a.svg"/>
    <ExplorerItem Name="Plot" Type="Default" Parent="Plots" Image="a.svg"/>
  </ExplorerItems>
</Service>
"""


class Editor:
    def __init__(self):
        self.process = subprocess.Popen([CORVANE, "lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.number = 0
        self.diagnostics = {}

    def send(self, **message):
        body = json.dumps({"jsonrpc": "2.0", **message}).encode()
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.process.stdin.flush()

    def receive(self):
        length = 0
        while (line := self.process.stdout.readline().strip()):
            if line.lower().startswith(b"content-length:"):
                length = int(line.split(b":")[1])
        message = json.loads(self.process.stdout.read(length))
        if message.get("method") == "textDocument/publishDiagnostics":
            self.diagnostics[message["params"]["uri"]] = message["params"]["diagnostics"]
        return message

    def ask(self, method, **params):
        self.number += 1
        self.send(id=self.number, method=method, params=params)
        while (message := self.receive()).get("id") != self.number:
            pass
        return message.get("result") if "error" not in message else message["error"]

    def tell(self, method, **params):
        self.send(method=method, params=params)


class LanguageServer(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        root = pathlib.Path(self.folder.name).resolve()
        (root / "Services").mkdir()
        (root / "Images").mkdir()
        (root / "Images/a.svg").write_text('<svg xmlns="http://www.w3.org/2000/svg"/>')
        shutil.copy(SOURCE / "packaging/schema/Service.xdr", root / "Services")
        (root / "Services/Base.xml").write_bytes(BASE.encode("cp1252"))
        (root / "Services/Greeting.xml").write_bytes(GREETING.encode("cp1252"))
        self.base = (root / "Services/Base.xml").as_uri()
        self.greeting = (root / "Services/Greeting.xml").as_uri()
        self.editor = Editor()
        self.editor.ask("initialize", processId=None, rootUri=None, capabilities={})
        self.editor.tell("initialized")

    def tearDown(self):
        self.assertIsNone(self.editor.ask("shutdown"))
        self.editor.tell("exit")
        self.assertEqual(self.editor.process.wait(), 0)
        self.editor.process.stdin.close()
        self.editor.process.stdout.close()
        self.folder.cleanup()

    def open(self, text, uri=None):
        self.editor.tell("textDocument/didOpen", textDocument={
            "uri": uri or self.greeting, "languageId": "xml", "version": 1, "text": text})

    def change(self, text):
        self.editor.tell("textDocument/didChange", textDocument={"uri": self.greeting, "version": 2},
                         contentChanges=[{"text": text}])

    def found(self, uri=None):
        # The answer to any question comes behind what is published before it.
        self.editor.ask("textDocument/hover", textDocument={"uri": self.greeting}, position={"line": 0, "character": 0})
        return self.editor.diagnostics.get(uri or self.greeting, [])

    def at(self, text, what, behind=0):
        """The place of a text, in lines and units of UTF-16."""
        before = text[: text.index(what) + behind]
        return {"line": before.count("\n"), "character": len(before.rsplit("\n", 1)[-1].encode("utf-16-le")) // 2}

    def test_findings_follow_what_is_typed_and_not_saved(self):
        self.open(GREETING)
        self.assertEqual(self.found(), [])
        spoilt = GREETING.replace('Path="File"', 'Path="Fiel"')
        self.change(spoilt)
        (finding,) = self.found()
        self.assertEqual(finding["code"], "path-without-title")
        self.assertEqual(finding["range"], {"start": self.at(spoilt, "Fiel"), "end": self.at(spoilt, "Fiel", 4)})
        (action,) = self.editor.ask("textDocument/codeAction", textDocument={"uri": self.greeting},
                                    range=finding["range"], context={"diagnostics": [finding]})
        self.assertEqual(action["edit"]["changes"][self.greeting], [{"range": finding["range"], "newText": "File"}])
        # A tag that isn't finished hides what others say, and no more.
        self.change(spoilt.replace("</Menus>", "<"))
        self.assertEqual([each["code"] for each in self.found()], ["not-well-formed"])
        self.change(GREETING)
        self.assertEqual(self.found(), [])

    def test_letters_count_as_the_editor_counts(self):
        spoilt = GREETING.replace("#Gott", "Gott#")
        self.open(spoilt)
        (finding,) = self.found()
        self.assertEqual(finding["code"], "bad-mnemonic")
        self.assertEqual(finding["range"]["end"]["character"] - finding["range"]["start"]["character"],
                         len("Gr\u00fc\u00df Gott#"))

    def test_names_lead_to_where_they_are_defined(self):
        self.open(GREETING)
        for written, uri, text, name in (("File\" PositionOrder=\"10", self.base, BASE, "File\" PositionOrder"),
                                         ("Greet\" Path", self.greeting, GREETING, "Greet\" Action"),
                                         ("Plots\" Image=\"a.svg\"/>\n  </Exp", self.greeting, GREETING, "Plots\" Type")):
            (place,) = self.editor.ask("textDocument/definition", textDocument={"uri": self.greeting},
                                       position=self.at(GREETING, written, 1))
            self.assertEqual((place["uri"], place["range"]["start"]), (uri, self.at(text, name)))

    def test_completion_knows_all_files(self):
        self.open(GREETING)
        for before, what, expected in (('Path="', "File", {"File"}), ('Parent="', "Plots", {"Plots", "Plot"}),
                                       (' ActionItem="', "Greet", {"Greet"}), ('Type="', "MenuItem", {"MenuTitle"})):
            text = GREETING.replace(before + what, before, 1) if before != 'Type="' else GREETING
            position = self.at(GREETING, before, len(before))
            self.change(text)
            items = self.editor.ask("textDocument/completion", textDocument={"uri": self.greeting}, position=position)
            self.assertLessEqual(expected, {each["label"] for each in items}, before)
        items = self.editor.ask("textDocument/completion", textDocument={"uri": self.greeting},
                                position=self.at(GREETING, "<MenuItem ", len("<MenuItem ")))
        self.assertIn("Tip", {each["label"] for each in items})

    def test_renaming_reaches_every_file(self):
        self.open(GREETING)
        self.open(BASE, self.base)
        edits = self.editor.ask("textDocument/rename", textDocument={"uri": self.base},
                                position=self.at(BASE, "File\"/>"), newName="Main")["changes"]
        self.assertEqual((len(edits[self.base]), len(edits[self.greeting])), (3, 1))
        edits = self.editor.ask("textDocument/rename", textDocument={"uri": self.greeting},
                                position=self.at(GREETING, "Plots"), newName="Charts")["changes"]
        self.assertEqual(len(edits[self.greeting]), 2)

    def test_renaming_refuses_what_another_has(self):
        self.open(GREETING)
        for text, what, name in ((GREETING, "Plots", "plot"), (BASE, "File\"/>", "Exit"), (GREETING, "Greet\" A", "a\"&<"),
                                 (GREETING, "Greet\" A", ""), (GREETING, "Plots", "Plots "), (GREETING, "Plots", "a\nb"),
                                 (BASE, "File\"/>", "File.More"), (BASE, "Action=", "Free"), (BASE, "Exit\" A", 7)):
            uri = self.base if text is BASE else self.greeting
            answer = self.editor.ask("textDocument/rename", textDocument={"uri": uri}, position=self.at(text, what), newName=name)
            if name == "a\"&<":
                self.assertEqual({each["newText"] for each in answer["changes"][uri]}, {"a&#34;&amp;&lt;"})
            else:
                self.assertEqual(answer["code"], -32602 if name == 7 else -32803, name)

    def test_forms_count_before_they_are_saved(self):
        uri = self.greeting.replace("Services/Greeting.xml", "Forms/GreetingSvc.Page.ui")
        self.open("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"P\"/></ui>", uri)
        self.assertEqual([], self.editor.diagnostics.get(uri, []))  # no such file yet, so nothing reads it
        path = pathlib.Path(self.folder.name).resolve() / "Forms/GreetingSvc.Page.ui"
        path.parent.mkdir()
        path.write_text("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"P\"/></ui>")
        self.open("<ui version=\"3.0\"/>", uri)
        self.assertEqual([each["code"] for each in self.found(uri)], ["form-unused", "form-unreadable"])

    def test_nonsense_is_answered(self):
        self.assertEqual(self.editor.ask("textDocument/unheardOf")["code"], -32601)
        self.assertIsNone(self.editor.ask("textDocument/hover", textDocument={"uri": "untitled:1"},
                                          position={"line": 9, "character": 9}))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
