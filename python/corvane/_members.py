"""What can be called by name: members of classes of the process and of the application."""

from __future__ import annotations

import inspect
import sys
from typing import Any, Callable, Dict, List, Tuple, Type

from ._failures import Json


# Of properties that are declared with one of these types the application is told.
_TYPES = {"bool": "boolean", "int": "integer", "float": "number", "str": "text"}


class Member:
    """A member of a class, of the application or of the process."""

    __slots__ = ("declared", "function", "is_property", "is_stored", "is_writable", "least", "most", "name")

    def __init__(
        self, name: str, is_property: bool, is_writable: bool, function: Any = None, declared: Any = None
    ) -> None:
        self.name = name
        self.declared = _TYPES.get(getattr(declared, "__name__", declared))
        self.is_property = is_property
        self.is_writable = is_writable
        self.function = function
        self.is_stored = is_property and function is None
        self.least, self.most = (0, 0) if is_property else _argument_counts(function) if function else (0, 0)

    def described(self) -> Json:
        told: Dict[str, Json]
        if self.is_property:
            told = {"name": self.name, "property": True, "writable": self.is_writable}
            if self.is_stored:
                told["stored"] = True
            if self.declared:
                told["type"] = self.declared
            return told
        told = {"name": self.name, "parameters": self.least}
        code = getattr(inspect.unwrap(self.function), "__code__", None)
        if code is not None:
            told["file"], told["line"] = code.co_filename, code.co_firstlineno
        return told


def _argument_counts(function: Callable[..., Any]) -> Tuple[int, int]:
    """The least and the greatest number of arguments that a method takes behind self."""
    least = most = 0
    is_job = getattr(function, "_corvane_job", False) or inspect.iscoroutinefunction(function)
    for parameter in list(inspect.signature(function).parameters.values())[1:]:
        if is_job and parameter.name == "progress":
            continue
        if parameter.kind is parameter.VAR_POSITIONAL:
            most = sys.maxsize
        elif parameter.kind in (parameter.POSITIONAL_ONLY, parameter.POSITIONAL_OR_KEYWORD):
            most += 1
            least += parameter.default is parameter.empty
    return least, most


class ClassInfo:
    """What the application may use of a class of the process."""

    def __init__(self, described: Type[Any]) -> None:
        self.described_class = described
        self.members: Dict[str, Member] = {}
        self.events: Dict[str, str] = {}
        base = next((c for c in described.__mro__ if "_corvane_kind" in vars(c)), object)
        self.kind: str = getattr(base, "_corvane_kind", "object")
        always: Tuple[str, ...] = getattr(base, "_corvane_always", ())
        known: Tuple[str, ...] = getattr(base, "_corvane_events", ())
        for event in known:
            function = "On" + event
            if event in always or getattr(described, function) is not getattr(base, function):
                self.events[event] = "_corvane_" + event.lower() if event in always else function
        for owner in reversed(described.__mro__):
            if owner is object or owner.__module__.split(".")[0] == "corvane":
                continue
            for name, declared in vars(owner).get("__annotations__", {}).items():
                if not name.startswith("_"):
                    self.members[name.lower()] = Member(name, True, True, declared=declared)
            for name, value in vars(owner).items():
                if name.startswith("_") or name[:2] == "On" and name[2:] in known:
                    continue
                if isinstance(value, property):
                    declared = getattr(value.fget, "__annotations__", {}).get("return")
                    self.members[name.lower()] = Member(name, True, value.fset is not None, value, declared)
                elif inspect.isfunction(value):
                    self.members[name.lower()] = Member(name, False, False, value)

    def described(self) -> Json:
        told: Dict[str, Json] = {
            "name": self.described_class.__name__,
            "kind": self.kind,
            "events": sorted(self.events),
            "members": [member.described() for member in self.members.values()],
        }
        try:
            told["file"] = inspect.getsourcefile(self.described_class)
            told["line"] = inspect.getsourcelines(self.described_class)[1]
        except (OSError, TypeError):
            pass  # made at run time
        return told


def all_classes() -> List[Type[Any]]:
    """The classes of services, explorer items and pages that the program has defined, by name."""
    from . import _objects

    found: Dict[str, Type[Any]] = {}
    todo: List[Type[Any]] = [_objects.Service, _objects.Item, _objects.Page]
    while todo:
        for c in todo.pop().__subclasses__():
            todo.append(c)
            if c.__module__.split(".")[0] != "corvane":
                found[c.__name__] = c
    return [found[name] for name in sorted(found)]
