"""Services of a Corvane application in Python.

A service is a class in a file that ends with ``corvane.run()``::

    import corvane

    class Birds(corvane.Service):
        def OnNewBird(self) -> None:
            corvane.set_status("A new bird")

    corvane.run()

Procedures have the names that the definition file gives them. docs/python.md describes the rest.
"""

from ._failures import Failure
from ._host import (
    app_path,
    ask,
    ask_open_file,
    ask_save_file,
    ask_text,
    explorer,
    find_service,
    framework,
    open_window,
    preferences,
    set_status,
    show_message,
)
from ._jobs import JobCancelled, Progress, job
from ._objects import Item, Page, Service
from ._passed import HostObject
from ._runtime import run
from ._values import Rows, picture

__all__ = [
    "Failure",
    "HostObject",
    "Item",
    "JobCancelled",
    "Page",
    "Progress",
    "Rows",
    "Service",
    "app_path",
    "ask",
    "ask_open_file",
    "ask_save_file",
    "ask_text",
    "explorer",
    "find_service",
    "framework",
    "job",
    "open_window",
    "picture",
    "preferences",
    "run",
    "set_status",
    "show_message",
]
