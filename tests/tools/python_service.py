"""usage: python_service.py CORVANE ROOT FOLDER -- what `corvane new --python` writes is sound and runs; mypy isn't needed.

Writes an application with two services below FOLDER, checks it with its plug-ins, runs its own tests, and breaks it to
see that the check finds missing procedures, wrong numbers of arguments and a property of a wrong type."""

import os
import pathlib
import shutil
import subprocess
import sys

corvane, root = sys.argv[1], pathlib.Path(sys.argv[2])
folder = pathlib.Path(sys.argv[3])


def run(*command, status=0, cwd=None, **variables):
    done = subprocess.run(command, cwd=cwd, capture_output=True, text=True, env={**os.environ, **variables}, timeout=300)
    if done.returncode != status:
        sys.exit(f"{' '.join(command)} ended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout + done.stderr


def with_pytest():
    """The interpreter of this run, or else the system's, whichever has pytest."""
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import pytest"], capture_output=True).returncode == 0:
            return python
    sys.exit("there is no pytest: run scripts/packages test")


shutil.rmtree(folder, ignore_errors=True)
folder.mkdir(parents=True)
run(corvane, "new", "aviary", "--service", "Birds", "--python", cwd=folder)
project = folder / "aviary"
run(corvane, "new", "--service", "Cages", "--python", cwd=project)
app = project / "app"
shutil.copy(root / "packaging/schema/Service.xdr", app / "Services")
run(corvane, "check", str(app), "--plugins", "--fail-on", "error")


def run_tests(application, tests):
    run(
        with_pytest(), "-m", "pytest", "-q", "-p", "no:cacheprovider", "-p", "corvane.testing", str(tests),
        CORVANE=corvane, APPLICATION_FOLDER=str(application), PYTHONPATH=str(root / "python"), PYTHONDONTWRITEBYTECODE="1",
    )


run_tests(app, project / "tests")

# The example of the documentation, with the shell's own definitions.
example = folder / "example"
shutil.copytree(root / "docs/examples/python", example)
shutil.copy(app / "Services/Framework.xml", example / "Services")
shutil.copy(app / "Services/Service.xdr", example / "Services")
shutil.copytree(app / "Images", example / "Images")
run(corvane, "check", str(example), "--plugins", "--fail-on", "warning")
run_tests(example, example)

# A form's field is the page's, and the explorer's items come from the process.
steps = folder / "steps.txt"
steps.write_text("tab 0\nnode 0 BirdsItem.Item 1\ndblclick\n")
shown = run(corvane, "inspect", str(app), "--steps", str(steps))
for wanted in ("key Item 1", "Title: Item 1"):
    if wanted not in shown:
        sys.exit(f"{wanted} isn't in\n{shown}")

service = app / "plugins/BirdsSvc/service.py"
text = service.read_text()
broken = text.replace("def OnNew(self)", "def OnNew(self, item)").replace("def Start", "def Started")
broken = broken.replace("def OnOpen", "def CanDrop(self):\n        return True\n\n    def OnOpened")
service.write_text(broken.replace('Title: str = ""', "Title: bool = False"))
found = run(corvane, "check", str(app), "--plugins", status=1)
for wanted in (
    "BirdsSvc.BirdsService.OnNew takes one argument", 'BirdsSvc.BirdsService has no member "Start"',
    'Birds.xml:17:41: error: the class BirdsSvc.BirdsItem has no member "OnOpen"',
    "BirdsSvc.BirdsItem.CanDrop takes no argument and is given what is dropped", 'a member "CanDrop" and no "Drop"',
    '"Title": the class "BirdsSvc.BirdsPage" has the property in a type that can\'t hold every value of the field',
):
    if wanted not in found:
        sys.exit(f"{wanted} isn't in\n{found}")
