"""The tasks of a first hour. Each has what is there before, one way by keyboard and one by mouse, and what must be
true afterwards, which is read from the program's tree or from files."""
import dataclasses
import json
import shutil
import sqlite3
import subprocess
from typing import Callable

from desk import Missing, wait


@dataclasses.dataclass
class Task:
    name: str
    title: str
    keyboard: Callable
    mouse: Callable
    check: Callable
    before: Callable = lambda desk: None
    most: int = 0  # acts; 0 is any number
    environment: dict = dataclasses.field(default_factory=dict)


# What several tasks need.

def penguins(desk):
    """The sample's table is open. No act of the task."""
    desk.key("ctrl+o")
    desk.tree.find("dialog", state="active")
    desk.type(str(desk.build / "studies" / "Data" / "penguins.csv"))
    desk.key("Return")
    window(desk, "penguins.csv")


def penguins_and_histogram(desk):
    penguins(desk)
    desk.key("F9")
    window(desk, "Histogram of penguins.csv")


def window(desk, title):
    """The document with that title, once it is shown."""
    return desk.tree.find("frame", title)


def tab(desk, title):
    """The tab of a document; the title may lose its middle there."""
    return desk.tree.find("page tab", title)


def group_lefts(desk):
    """Where the documents begin from the left, each place once."""
    area = desk.tree.find("layered pane", "Windows")
    return {node.place()[0] for node in desk.tree.all("frame", ".csv", within=area)}


def choose_file(desk, name):
    """In the file dialog by mouse: the file by a double click; to the home folder by the side bar first, unless it is shown."""
    dialog = desk.tree.find("dialog", state="active")
    folder = desk.tree.find("combo box", "/", within=dialog).name
    if folder != str(desk.home):
        desk.click(desk.tree.find("list item", desk.home.name, within=dialog))
    desk.click(desk.tree.find("tree item", name), times=2)


def rows(desk, query):
    """Of the file that Studies keeps everything in."""
    with sqlite3.connect(f"file:{desk.file('studies.sqlite')}?mode=ro", uri=True) as store:
        return store.execute(query).fetchall()


def settings(desk):
    """All texts of the files of settings and state."""
    texts = [path.read_text(errors="replace") for folder in ("config", "state") for path in (desk.home / folder).rglob("*")
             if path.is_file()]
    return "\n".join(texts)


# 1. A messy file, to a chart.

def write_messy(desk, above):
    lines = above + ["Ort;Größe (cm);Bemerkung", "Nord;12,5;kühl", "Süd;;", 'Nord;13,25;"a;b"', "", "Süd;11,0; x ",
                     "Süd;NA;prüfen", "Nord;12,9;"]
    (desk.home / "messy.csv").write_bytes("\r\n".join(lines).encode("latin-1") + b"\r\n")


def messy(desk):
    write_messy(desk, [])


def messy_by_keyboard(desk):
    desk.key("ctrl+o")
    desk.tree.find("dialog", "Open Data File", "active")
    desk.type(str(desk.home / "messy.csv"))
    desk.key("Return")
    window(desk, "messy.csv")
    desk.key("F9")


def messy_by_mouse(desk):
    desk.click(desk.tree.find("push button", "Open"))
    choose_file(desk, "messy.csv")
    window(desk, "messy.csv")
    desk.click(desk.tree.find("push button", "Histogram", "enabled"))


def messy_is_charted(desk):
    window(desk, "Histogram of messy.csv: Größe")


# The same with a title above the names, into a study.

def titled(desk):
    write_messy(desk, ["Messstation Süd", "exportiert am 3.5.2024; alle Angaben ohne Gewähr"])


def titled_by_keyboard(desk):
    desk.key("ctrl+i")
    desk.tree.find("text", "File", "focused")
    desk.type(str(desk.home / "messy.csv"))
    desk.key("alt+n")
    desk.tree.find("label", "can't be read")
    desk.key("alt+k")
    desk.tree.find("spin box", "Lines to skip", "focused")
    desk.type("2")
    desk.tree.find("cell", "Größe (cm)")
    desk.tree.find("push button", "Finish", "enabled")
    desk.key("alt+f")
    window(desk, "messy.csv")
    desk.key("F9")


def titled_by_mouse(desk):
    desk.click(desk.tree.find("push button", "Import"))
    desk.click(desk.tree.find("push button", "Choose a file"))
    choose_file(desk, "messy.csv")
    desk.click(desk.tree.find("push button", "Next", "enabled"))
    for problem in ("can't be read", "no rows"):  # what is below it moves by another one
        desk.tree.find("label", problem)
        left, top, width, height = desk.tree.find("spin box", "Lines to skip").still_place()
        desk.click((left + width - 8, top + height // 4))
    desk.tree.find("cell", "Größe (cm)")
    desk.click(desk.tree.find("push button", "Finish", "enabled"))
    window(desk, "messy.csv")
    desk.click(desk.tree.find("push button", "Histogram", "enabled"))


def titled_is_charted(desk):
    messy_is_charted(desk)
    if (count := rows(desk, "select count(*) from data_sets")) != [(1,)]:
        raise Missing(f"{count} data sets in the store")


# 2. Two groups.

def compare_by_keyboard(desk):
    desk.key("F7")
    window(desk, "Comparison of penguins.csv")
    desk.key("alt+c")
    desk.type("body")
    window(desk, "Comparison of penguins.csv: body mass")


def compare_by_mouse(desk):
    desk.click(desk.tree.find("push button", "Compare Groups", "enabled"))
    document = window(desk, "Comparison of penguins.csv")
    desk.click(desk.tree.find("combo box", "bill length", within=document))
    desk.click(desk.tree.find("list item", "body mass"))
    window(desk, "Comparison of penguins.csv: body mass")


def is_compared(desk):
    document = window(desk, "Comparison of penguins.csv: body mass, Adelie and Chinstrap")
    desk.tree.find("label|text", "Welch's t-test: t = ", within=document)


# 3 and 4. Groups of tabs, and windows of their own.

def split_by_mouse(desk):
    left, top, width, height = desk.tree.find("layered pane", "Windows").place()
    desk.drag(tab(desk, "Histogram of").middle(), (left + width - 30, top + height // 2),
              before_drop=lambda: desk.picture("drag"))


def is_split(desk):
    wait("the windows aren't side by side", lambda: len(group_lefts(desk)) == 2)


def is_alone(desk):
    return any("Histogram" in node.name for node in desk.tree.windows())


def out_and_back_by_keyboard(desk):
    desk.key("alt+shift+Home")
    wait("it doesn't come out", lambda: is_alone(desk))
    desk.picture("out")
    desk.key("alt+shift+End")


def out_and_back_by_mouse(desk):
    area = desk.tree.find("layered pane", "Windows")
    left, top, width, height = area.place()
    desk.drag(tab(desk, "Histogram of").middle(), (60, 860))
    wait("it doesn't come out", lambda: is_alone(desk))
    desk.picture("out")
    own = next(node for node in desk.tree.windows() if "Histogram" in node.name)
    desk.drag(desk.tree.find("page tab", "Histogram of", within=own).middle(), (left + width // 2, top + 12),
              before_drop=lambda: desk.picture("drag"))


def is_back(desk):
    wait("it doesn't go back", lambda: not is_alone(desk))
    area = desk.tree.find("layered pane", "Windows")
    desk.tree.find("frame", "Histogram of penguins.csv", within=area)


# 5. What was deleted.

def new_study(desk):
    """There is an empty one, and it is selected."""
    desk.key("ctrl+n")
    desk.tree.find("tree item", "Study 1")
    desk.key("Return")  # as its name is being typed
    desk.click(desk.tree.find("tree item", "Study 1"))


def a_study_is_deleted(desk):
    """Made and deleted, and the program has been started again, so that nothing can be undone."""
    new_study(desk)
    desk.key("Delete")
    desk.tree.gone("tree item", "Study 1")
    desk.restart()


def restore_by_keyboard(desk):
    desk.key("alt+e")
    desk.tree.find("menu item", "Restore Deleted…", "enabled")
    desk.key("s")
    desk.tree.find("alert message", "Restore Deleted", "active")
    desk.key("Return")


def restore_by_mouse(desk):
    desk.menu("Edit", "Restore Deleted…")
    desk.click(desk.tree.find("push button", "“Study 1”", within=desk.tree.find("alert message", "Restore Deleted")))


def is_restored(desk):
    desk.tree.find("tree item", "Study 1")


# 6. On paper.

def five_pages(desk):
    lines = ["number,square"] + [f"{n},{n * n}" for n in range(1, 251)]
    (desk.home / "five.csv").write_text("\n".join(lines) + "\n")
    desk.key("ctrl+o")
    desk.tree.find("dialog", "Open Data File")
    desk.type(str(desk.home / "five.csv"))
    desk.key("Return")
    window(desk, "five.csv")


def print_by_keyboard(desk):
    desk.key("ctrl+p")
    desk.tree.find("dialog", "Print Preview", "active")
    desk.picture("preview")
    desk.key("ctrl+p")
    desk.tree.find("label", "File name:")
    desk.key("Return")


def print_by_mouse(desk):
    desk.menu("File", "Print Window…")
    dialog = desk.tree.find("dialog", "Print Preview", "active")
    desk.click(desk.tree.find("push button", "Print", within=dialog))
    desk.tree.find("label", "File name:")
    desk.click(desk.tree.find("push button", "Save", within=desk.tree.windows()[-1]))


def is_printed(desk):
    path = desk.file("*.pdf")

    def pages():
        told = subprocess.run(["pdfinfo", path], capture_output=True, text=True, check=False).stdout
        return next((int(line.split()[1]) for line in told.splitlines() if line.startswith("Pages:")), 0)
    count = wait("no PDF that can be read", pages)
    if count != 5:
        raise Missing(f"{count} pages")
    last = subprocess.run(["pdftotext", "-f", "5", path, "-"], capture_output=True, text=True, check=True).stdout
    if "62500" not in last.replace(",", ""):
        raise Missing("the last row isn't on the last page")


# 7. A command by its German name.

def german_by_keyboard(desk):
    desk.key("ctrl+shift+p")
    desk.tree.find("text", state="focused")
    desk.type("gruppen verg")
    desk.tree.find("list item", "Gruppen vergleichen", "selected")
    desk.picture("palette")
    desk.key("Return")


def german_by_mouse(desk):
    desk.menu("Analyse", "Gruppen vergleichen")


def german_command_is_done(desk):
    window(desk, "Vergleich")


# 8. Another key.

def shortcuts_dialog(desk):
    return desk.tree.find("dialog", "Keyboard Shortcuts", "active")


def rebind_by_keyboard(desk):
    desk.key("ctrl+shift+p")
    desk.tree.find("text", "Command", "focused")
    desk.type("keyboard short")
    desk.tree.find("list item", "Keyboard Shortcuts", "selected")
    desk.key("Return")
    dialog = shortcuts_dialog(desk)
    desk.type("histogram")
    desk.tree.find("tree item", "Histogram", "selected", within=dialog)
    desk.key("alt+n")
    desk.tree.find("text", "New shortcut", "focused")
    desk.key("ctrl+alt+h")
    desk.key("Tab")  # what is pressed before could be the second stroke
    desk.tree.find("push button", "Assign", "focused")
    desk.key("space")
    desk.tree.find("tree item", "Ctrl+Alt+H", within=dialog)
    desk.key("Escape")


def rebind_by_mouse(desk):
    desk.menu("Tools", "Keyboard Shortcuts…")
    dialog = shortcuts_dialog(desk)
    desk.click(desk.tree.find("tree item", "Analysis › Histogram", within=dialog))
    desk.click(desk.tree.find("text", "New shortcut"))
    desk.key("ctrl+alt+h")  # the one thing that no mouse says
    desk.click(desk.tree.find("push button", "Assign", "enabled"))
    desk.tree.find("tree item", "Ctrl+Alt+H", within=dialog)
    desk.click(desk.tree.find("push button", "Close", within=dialog))


def key_is_bound(desk):
    desk.tree.gone("dialog", "Keyboard Shortcuts")
    desk.key("ctrl+alt+h")
    window(desk, "Histogram of penguins.csv")
    wait("the file of settings doesn't have it", lambda: "Ctrl+Alt+H" in settings(desk))


# 9. Three files, into a study.

def three_files(desk):
    for name in ("one", "two", "three"):
        (desk.home / f"{name}.csv").write_text("place,size\na,1\nb,2\nc,3\n")
    new_study(desk)


def three_by_keyboard(desk):
    for name in ("one", "two", "three"):
        desk.key("ctrl+i")
        desk.tree.find("text", "File", "focused")
        desk.type(str(desk.home / f"{name}.csv"))
        desk.tree.find("push button", "Finish", "enabled")
        desk.key("alt+f")
        window(desk, f"{name}.csv")


def three_by_drop(desk):
    with desk.drag_source([desk.home / f"{name}.csv" for name in ("one", "two", "three")]) as start:
        desk.drag(start, desk.tree.find("tree item", "Study 1").middle(), before_drop=lambda: desk.picture("drag"))


def three_are_imported(desk):
    wait("they aren't three data sets of one study",
         lambda: rows(desk, "select count(*), count(distinct study_id) from data_sets") == [(3, 1)])
    for name in ("one", "two", "three"):
        desk.tree.find("tree item", f"{name}.csv")


# 10. Another language.

def language_by_keyboard(desk):
    desk.key("ctrl+comma")
    desk.tree.find("dialog", "Preferences", "active")
    desk.tree.find("spin box", state="focused")
    desk.key("shift+Tab")  # from the page to the list of pages
    desk.tree.find("list item", state="focused")
    desk.key("End")
    box = desk.tree.beside("Language:", "combo box")
    desk.key("alt+l")
    wait("the language hasn't the focus", lambda: "focused" in box.states())
    desk.type("deu")
    desk.key("Return")


def language_by_mouse(desk):
    desk.menu("Tools", "Preferences…")
    dialog = desk.tree.find("dialog", "Preferences", "active")
    desk.click(desk.tree.find("list item", "Appearance", within=dialog))
    desk.click(desk.tree.beside("Language:", "combo box"))
    desk.click(desk.tree.find("list item", "Deutsch"))
    desk.click(desk.tree.find("push button", "OK", within=dialog))


def is_german(desk):
    desk.tree.gone("dialog")
    desk.restart()
    desk.tree.find("menu item", "Datei")
    desk.tree.find("push button", "Neue Studie")


# 11. A layout.

def layout_by_keyboard(desk):
    desk.key("alt+w")
    desk.tree.find("menu item", "Layouts")
    desk.key("y")
    desk.tree.find("menu item", "Save Layout…")
    desk.key("s")
    desk.tree.find("dialog", "Save Layout", "active")
    desk.type("Two columns")
    desk.key("Return")


def layout_by_mouse(desk):
    desk.menu("Window", "Layouts", "Save Layout…")
    dialog = desk.tree.find("dialog", "Save Layout", "active")
    desk.click(desk.tree.find("push button", "OK", within=dialog))


def layout_is_saved(desk):
    path = desk.file("layouts.json")
    wait("no layout in the file", lambda: any(name in json.dumps(json.loads(path.read_text()))
                                              for name in ("Two columns", "Layout 1")))


# 12. A study for someone else.

def a_study_with_data(desk):
    desk.key("ctrl+i")
    desk.tree.find("text", "File", "focused")
    desk.type(str(desk.build / "studies" / "Data" / "penguins.csv"))
    desk.tree.find("push button", "Finish", "enabled")
    desk.key("alt+f")
    window(desk, "penguins.csv")


def send_by_keyboard(desk):
    desk.key("F6")
    desk.key("Home")
    desk.key("Down")
    desk.tree.find("tree item", "Study 1", "selected")
    desk.key("ctrl+shift+s")
    desk.tree.find("label", "File name:")
    desk.key("Return")


def send_by_mouse(desk):
    desk.click(desk.tree.find("tree item", "Study 1"))
    desk.click(desk.tree.find("push button", "Export", "enabled"))
    desk.tree.find("label", "File name:")
    desk.click(desk.tree.find("push button", "Save", within=desk.tree.windows()[-1]))


def study_is_sent(desk):
    """Someone who has nothing yet opens the file."""
    path = desk.file("*.study")
    desk.tree.gone("label", "File name:")
    desk.end()
    for folder in ("data", "state"):
        shutil.rmtree(desk.home / folder)
    desk.start()
    desk.key("ctrl+o")
    desk.tree.find("label", "File name:")
    desk.type(str(path))
    desk.key("Return")
    desk.tree.find("tree item", "Study 1")
    desk.tree.find("tree item", "penguins.csv")


TASKS = [
    Task("messy", "open a messy CSV file as a chart", messy_by_keyboard, messy_by_mouse, messy_is_charted, messy, 8),
    Task("titled", "import one with a title above", titled_by_keyboard, titled_by_mouse, titled_is_charted, titled),
    Task("compare", "compare two groups", compare_by_keyboard, compare_by_mouse, is_compared, penguins),
    Task("split", "put two windows side by side", lambda desk: desk.key("alt+shift+Right"), split_by_mouse, is_split,
         penguins_and_histogram),
    Task("out", "take a window out and put it back", out_and_back_by_keyboard, out_and_back_by_mouse, is_back,
         penguins_and_histogram),
    Task("restore", "restore a deleted study", restore_by_keyboard, restore_by_mouse, is_restored, a_study_is_deleted),
    Task("print", "print a table of five pages", print_by_keyboard, print_by_mouse, is_printed, five_pages),
    Task("german", "find a command by its German name", german_by_keyboard, german_by_mouse, german_command_is_done,
         penguins, environment={"LANGUAGE": "de"}),
    Task("rebind", "give a command another shortcut", rebind_by_keyboard, rebind_by_mouse, key_is_bound, penguins),
    Task("drop", "import three files at once", three_by_keyboard, three_by_drop, three_are_imported, three_files),
    Task("language", "change the language", language_by_keyboard, language_by_mouse, is_german),
    Task("layout", "save a layout", layout_by_keyboard, layout_by_mouse, layout_is_saved, penguins),
    Task("send", "send a study", send_by_keyboard, send_by_mouse, study_is_sent, a_study_with_data),
]
