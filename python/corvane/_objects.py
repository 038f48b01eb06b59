"""The classes that services, explorer items and pages derive from."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Dict, List, Optional, Tuple

from . import _host
from ._passed import EventAnswer, HostObject
from ._runtime import runtime

if TYPE_CHECKING:
    from . import library


class _Client:
    """What all three have."""

    def action(self, name: str) -> library.ActionItem:
        """One of its own actions, by the name in the definition file: ``self.action("Save").Enabled = False``.

        Fails while there are no menus yet; an explorer item has its actions once it is in the explorer.
        """
        return _host.call("Action", self, name)  # type: ignore[no-any-return]

    def open_window(self, window: str, about: object = None, **options: Any) -> library.Window:
        """corvane.open_window; OnExit is called when the window closes."""
        return _host.open_window(window, about, owner=self, **options)

    def OnExit(self, window: library.Window, was_cancelled: bool) -> None:
        """A window that it opened has closed."""


class Service(_Client):
    """A service. Procedures of its commands are methods under the names in the definition file.

    The process is started when the service is first needed; OnInitialize comes before anything else then.
    """

    _corvane_kind = "service"
    _corvane_events: Tuple[str, ...] = ("Initialize", "Terminate", "Unsaved", "Save", "SaveComplete", "Exit")
    _corvane_always: Tuple[str, ...] = ("Unsaved",)

    def OnInitialize(self) -> None:
        """The service begins: menus and explorer are built."""

    def OnTerminate(self) -> None:
        """The main window has been closed."""

    def OnUnsaved(self) -> Dict[str, object]:
        """What isn't saved yet, by names that the user reads; OnSave gets one of the values, which are objects."""
        return {}

    def OnSave(self, item: Any) -> None:
        """Save one of those."""

    def OnSaveComplete(self, was_cancelled: bool) -> None:
        """The saving has ended."""

    def _corvane_unsaved(self, order: float) -> EventAnswer:
        return EventAnswer({"order": order, "items": list(self.OnUnsaved().items())})


class Item(_Client):
    """An item of the explorer."""

    _corvane_kind = "item"
    _corvane_events: Tuple[str, ...] = ("Initialize", "DisplayName", "BeforeRename", "AfterRename", "Exit")
    _corvane_always: Tuple[str, ...] = ("Initialize", "AfterRename")

    _corvane_name = ""

    def __init__(self, name: str = "") -> None:
        self._corvane_name = name

    @property
    def name(self) -> str:
        """By which the explorer shows it; that of its definition for an item that has set none."""
        return self._corvane_name

    @name.setter
    def name(self, name: str) -> None:
        self._corvane_name = name
        if runtime.passed.knows(self):
            _host.call("NameItem", self, name)

    def add_child(self, item: Item) -> None:
        """In OnInitialize: the item is added below this one."""
        self.__dict__.setdefault("_corvane_children", []).append(item)

    def OnInitialize(self) -> None:
        """The item is added to the explorer, perhaps again: it adds its children."""

    def OnDisplayName(self, text: str) -> str:
        """The text that is shown."""
        return text

    def OnBeforeRename(self, text: str) -> str:
        """The text that is edited."""
        return text

    def OnAfterRename(self, name: str) -> None:
        """The user has renamed the item, or a refusal has named it back."""

    def _corvane_initialize(self) -> EventAnswer:
        children: List[Item] = []
        self.__dict__["_corvane_children"] = children
        self.OnInitialize()
        return EventAnswer({"name": self._corvane_name, "children": list(children)})

    def _corvane_afterrename(self, name: str) -> None:
        self._corvane_name = name
        self.OnAfterRename(name)


class Form:
    """The form of a page: its fields, groups and tabs by their names."""

    def __init__(self, page: Page) -> None:
        self._page = page

    def set_enabled(self, name: str, enabled: bool) -> None:
        _host.call("SetFieldEnabled", self._page, name, enabled)

    def set_visible(self, name: str, visible: bool) -> None:
        _host.call("SetFieldVisible", self._page, name, visible)

    def set_problem(self, name: str, text: str) -> None:
        """Why the field can't be accepted; "" takes that back."""
        _host.call("SetFieldProblem", self._page, name, text)

    def set_label(self, name: str, text: str) -> None:
        _host.call("SetFieldLabel", self._page, name, text)

    def refresh(self, name: str = "") -> None:
        """The page's attributes have changed: one field is read again, or all are."""
        _host.call("RefreshField", self._page, name)

    def value(self, name: str) -> Any:
        return _host.call("FieldValue", self._page, name)

    def set_value(self, name: str, value: object) -> None:
        _host.call("SetFieldValue", self._page, name, value)

    def selected_row(self, name: str) -> int:
        """Of a table or tree, from 1; 0 for none."""
        return int(_host.call("SelectedRow", self._page, name))

    def focus(self, name: str) -> None:
        _host.call("FocusField", self._page, name)


class Page(_Client):
    """A page of a window. Its inside is the form Forms/PROGID.ui, whose fields are attributes of the page.

    They are declared with their types in the class: ``Title: str = ""``.
    """

    _corvane_kind = "page"
    _corvane_events: Tuple[str, ...] = (
        "Initialize",
        "Terminate",
        "Activate",
        "Deactivate",
        "Validate",
        "Save",
        "Command",
        "Exit",
    )
    _corvane_always: Tuple[str, ...] = ("Initialize", "Terminate")

    window: Optional[HostObject] = None  #: the page's window, nothing outside of its life
    about: Any = None  #: what the window is about

    @property
    def form(self) -> Form:
        return Form(self)

    def OnInitialize(self) -> None:
        """The page joins its window."""

    def OnTerminate(self) -> None:
        """The page leaves its window."""

    def OnActivate(self) -> None:
        """The page comes to the front."""

    def OnDeactivate(self) -> None:
        """The page goes to the back."""

    def OnValidate(self) -> bool:
        """Whether the window may go on with the page as it is. Call validity_changed when the answer changes."""
        return True

    def OnSave(self) -> None:
        """Save what is on the page."""

    def OnCommand(self, command: int) -> None:
        """One of the window's commands was chosen."""

    def validity_changed(self) -> None:
        """The window's commands follow what OnValidate says now."""
        _host.call("ValidityChanged", self)

    def _corvane_initialize(self, window: HostObject, about: Any) -> None:
        self.window, self.about = window, about
        self.OnInitialize()

    def _corvane_terminate(self) -> None:
        try:
            self.OnTerminate()
        finally:
            self.window = self.about = None
