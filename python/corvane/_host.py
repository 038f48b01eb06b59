"""What a service asks of the application."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Optional, Sequence

from ._passed import HOST, ROOT, HostObject
from ._runtime import runtime

if TYPE_CHECKING:
    from . import library

_root = HostObject(ROOT, "Framework")
_host = HostObject(HOST, "Host")


def call(name: str, *arguments: object) -> Any:
    return runtime.call(_host, name, *arguments)


def framework() -> library.Framework:
    """The root object: Status, ServiceManager, WindowManager, NavigationManager, CVProgressBar, …"""
    return _root  # type: ignore[return-value]


def explorer() -> library.ExplorerManager:
    return call("Explorer")  # type: ignore[no-any-return]


def set_status(text: str) -> None:
    """The text in the status line."""
    runtime.ask({"on": ROOT, "set": "Status", "value": text})


def show_message(text: str, title: str = "") -> None:
    """Returns when the user has read it."""
    call("ShowMessage", text, title)


def ask(question: str, choices: Sequence[str], title: str = "") -> Optional[str]:
    """One of the choices, beside which there is "Cancel": nothing then. The first is the one that Return takes."""
    for choice in choices:
        if not choice or "\n" in choice:
            raise ValueError(f"{choice!r} can't be a choice: it isn't one line of text")
    return call("Ask", question, "\n".join(choices), title)  # type: ignore[no-any-return]


def ask_text(question: str, text: str = "", title: str = "") -> Optional[str]:
    """A line of text that begins with text; nothing when the user cancels."""
    return call("AskText", question, text, title)  # type: ignore[no-any-return]


def ask_open_file(title: str, filter: str = "", folder: str = "") -> Optional[str]:
    """The path of a file. The filter is pairs of text and pattern: "Data files (*.csv)|*.csv|All files|*"."""
    return call("AskOpenFile", title, filter, folder)  # type: ignore[no-any-return]


def ask_save_file(title: str, filter: str = "", path: str = "") -> Optional[str]:
    """The path of a file to be written; path is what the dialog suggests."""
    return call("AskSaveFile", title, filter, path)  # type: ignore[no-any-return]


def open_window(
    window: str,
    about: object = None,
    *,
    owner: object = None,
    key: str = "",
    caption: str = "",
    page: int = -1,
    hidden: bool = False,
    later: bool = False,
    mode: int = -1,
    state: int = -1,
    place: int = -1,
    type: int = -1,
    context: int = -1,
    apply: int = -1,
) -> library.Window:
    """Opens the window of that name in the definition file, about an object.

    A second window of a key isn't opened: the open one is shown. A modal window has closed when the call returns;
    WasWindowCancelled of the result says how. owner.OnExit is called when it closes.
    """
    options = (key, caption, page, hidden, later, mode, state, place, type, context, apply)
    return call("OpenWindow", owner, window, about, *options)  # type: ignore[no-any-return]


def app_path(name: str) -> str:
    """The path of a file or folder of the application, such as "Images/open.svg"."""
    return call("AppPath", name)  # type: ignore[no-any-return]


def find_service(name: str) -> Any:
    """Another service by the name in its definition; nothing when it isn't loaded."""
    return call("FindService", name)


def preferences(service: str, category: str = "Default") -> library.Preferences:
    """Settings of the user that are kept between runs: GetValue(name, default) and SetValue(name, value)."""
    return call("Preferences", service, category)  # type: ignore[no-any-return]
