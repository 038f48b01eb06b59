"""usage: python_samples.py CORVANE ROOT INSTRUMENTS STUDIES -- the samples that are written in Python, or have a service in it.

INSTRUMENTS and STUDIES are the applications in the build. Checks the first with its plug-ins and runs its own tests; applies
each analysis in Python of the second to its sample file."""

import os
import pathlib
import subprocess
import sys
import tempfile

corvane, root, instruments, studies = sys.argv[1], *map(pathlib.Path, sys.argv[2:5])


def run(*command, **variables):
    done = subprocess.run(command, capture_output=True, text=True, env={**os.environ, **variables}, timeout=600)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)} ended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def with_pytest():
    """The interpreter of this run, or else the system's, whichever has pytest."""
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import pytest"], capture_output=True).returncode == 0:
            return python
    sys.exit("there is no pytest: run scripts/packages test")


with tempfile.TemporaryDirectory() as folder:
    kept = {"INSTRUMENTS_DATA": folder, "PYTHONDONTWRITEBYTECODE": "1"}
    run(corvane, "check", str(instruments), "--plugins", "--fail-on", "warning", **kept)
    run(
        with_pytest(), "-m", "pytest", "-q", "-p", "no:cacheprovider", "-p", "corvane.testing",
        str(root / "samples/instruments/tests"),
        CORVANE=corvane, APPLICATION_FOLDER=str(instruments), PYTHONPATH=str(root / "python"), **kept,
    )
    if not (studies / "plugins/libStudiesPages.so").exists():
        sys.exit()  # there is no window that shows data
    steps = pathlib.Path(folder) / "steps.txt"
    penguins = studies / "Data/penguins.csv"
    expected = {
        "Correlations": "bill_length_mm, bill_depth_mm (n = 342) | r = -0.235",
        "Outliers": "body_mass_g | 0 of 342",
    }
    for analysis, wanted in expected.items():
        steps.write_text(f"answer {penguins}\nclick File.Open\nanswer {analysis}\nclick Analysis.PythonAnalyses\n")
        shown = run(corvane, "inspect", str(studies), "--steps", str(steps), XDG_DATA_HOME=folder, QT_QPA_PLATFORM="offscreen")
        if wanted not in shown:
            sys.exit(f"{wanted} isn't in\n{shown}")
