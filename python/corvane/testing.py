"""Whole applications in tests with pytest, without a display.

An application is started by ``corvane inspect``, which takes steps and prints what is on screen::

    def test_counts(corvane_application):
        application = corvane_application("build/birds")
        screen = application.take("click Birds.Count", "expect windows.count 0")
        assert screen.status == "1"

The steps are those of docs/tool.md. ``CORVANE`` in the environment names the tool; else it is searched for in the PATH.
"""

from __future__ import annotations

import json
import os
import subprocess
import tempfile
from typing import Any, Callable, Dict, List, Optional, Sequence, Tuple

try:
    import pytest
except ImportError:  # the class is of use without pytest, too
    pytest = None  # type: ignore[assignment]


class Screen:
    """What is on screen after the last step, as ``corvane inspect --json`` prints it."""

    def __init__(self, document: Dict[str, Any], output: str, text: Callable[[], str]) -> None:
        self.document = document
        #: What services have written to their output, a line with the service's name each.
        self.output = output
        self._run_for_text = text
        self._text: Optional[str] = None

    @property
    def text(self) -> str:
        """The same without ``--json``. The application is started once more for it, and takes the steps again."""
        if self._text is None:
            self._text = self._run_for_text()
        return self._text

    @property
    def status(self) -> str:
        """The text of the status bar; empty without one."""
        return str(self.document.get("status", ""))

    @property
    def log(self) -> List[Dict[str, Any]]:
        """The failures that were logged."""
        return list(self.document.get("log", []))


class Application:
    """An application folder. Each call of take starts it, takes the steps and ends it."""

    def __init__(self, folder: str, time_limit: int = 60) -> None:
        self.folder = folder
        self.time_limit = time_limit

    def take(self, *steps: str) -> Screen:
        """Fails with AssertionError for what a step "expect" has found otherwise, and when the start has failed."""
        output, errors = self._inspect(steps, "--json")
        return Screen(json.loads(output), errors, lambda: self._inspect(steps)[0])

    def _inspect(self, steps: Sequence[str], *options: str) -> Tuple[str, str]:
        tool = os.environ.get("CORVANE", "corvane")
        with tempfile.NamedTemporaryFile("w", suffix=".steps", encoding="utf-8") as file:
            file.write("\n".join(steps) + "\n")
            file.flush()
            command = [tool, "inspect", self.folder, *options, "--steps", file.name]
            command += ["--time-limit", str(self.time_limit)]
            done = subprocess.run(command, capture_output=True, text=True, encoding="utf-8", check=False)
        if done.returncode != 0:
            raise AssertionError(f"corvane inspect ended with {done.returncode}:\n{done.stderr}{done.stdout}")
        return done.stdout, done.stderr


if pytest is not None:

    @pytest.fixture
    def corvane_application() -> Callable[..., Application]:
        """Makes an Application of a folder."""
        return Application
