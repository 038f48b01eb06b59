"""The objects that the process and the application have passed to each other, and values as they are in messages."""

from __future__ import annotations

import functools
import math
import weakref
from typing import Any, Callable, ClassVar, Dict, Iterator, List, Optional, Protocol, Tuple, Union

from ._failures import Failure, Json
from ._members import Member

ROOT = 1
HOST = 2


class Application(Protocol):
    """Who asks the application what its objects are asked."""

    released: List[Tuple[int, int]]

    def call(self, on: HostObject, name: str, *arguments: object) -> Any: ...

    def set(self, on: HostObject, name: str, value: object) -> None: ...

    def members(self, on: HostObject) -> Dict[str, Member]: ...


class HostObject:
    """An object of the application. Its members are read, set and called under their names in any case."""

    __slots__ = ("__weakref__", "_class_name", "_handle", "_received")

    _application: ClassVar[Application]  # who asks it, set by _runtime

    def __init__(self, handle: int, class_name: str) -> None:
        object.__setattr__(self, "_handle", handle)
        object.__setattr__(self, "_class_name", class_name)
        object.__setattr__(self, "_received", 0)

    def __getattr__(self, name: str) -> Any:
        if name.startswith("_"):
            raise AttributeError(name)
        member = self._member(name)
        if member is None or member.is_property:
            return self._application.call(self, name)
        return functools.partial(self._application.call, self, name)

    def __setattr__(self, name: str, value: object) -> None:
        if name.startswith("_"):
            raise AttributeError(f"{name} can't be set")
        self._application.set(self, name, value)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, HostObject) and other._handle == self._handle

    def __hash__(self) -> int:
        return hash(self._handle)

    def __repr__(self) -> str:
        return f"<{self._class_name} {self._handle}>"

    def __dir__(self) -> List[str]:
        return [member.name for member in self._application.members(self).values()]

    def __len__(self) -> int:
        return int(self.Count)

    def __bool__(self) -> bool:
        return True

    def __iter__(self) -> Iterator[Any]:
        for position in range(1, len(self) + 1):
            yield self._application.call(self, "Item", position)

    def __getitem__(self, key: Union[str, int]) -> Any:
        return self._application.call(self, "Item", key)

    def __contains__(self, key: object) -> bool:
        return bool(self._application.call(self, "HasKey", key))

    def __del__(self) -> None:
        if self._handle > HOST and self._received:
            self._application.released.append((self._handle, self._received))

    def _member(self, name: str) -> Optional[Member]:
        """Nothing of an object whose members aren't listed, and which may have any."""
        members = self._application.members(self)
        member = members.get(name.lower())
        if member is None and members:
            raise AttributeError(f"{self._class_name} has no member {name}")
        return member


class PassedObjects:
    def __init__(self) -> None:
        self._host_objects: "weakref.WeakValueDictionary[int, HostObject]" = weakref.WeakValueDictionary()
        self._objects: Dict[int, List[Any]] = {}  # by handle: the object, and how often it has been sent
        self._handles: Dict[int, int] = {}  # by identity
        self._last_handle = 0

    def encode(self, value: Any) -> Json:
        if value is None or isinstance(value, (bool, str)):
            return value
        if isinstance(value, int):
            if not -(1 << 63) <= value < 1 << 63:
                raise Failure(f"The number {value} is too large to be passed", 6)
            return int(value)
        if isinstance(value, float):
            if math.isfinite(value):
                return float(value)
            return {"number": "nan" if math.isnan(value) else "inf" if value > 0 else "-inf"}
        if isinstance(value, HostObject):
            return {"host": value._handle}
        if hasattr(value, "dtype") and hasattr(value, "item") and not getattr(value, "shape", ()):
            return self.encode(value.item())  # a number of numpy's
        if isinstance(value, (list, tuple, dict, set, bytes, bytearray)):
            raise Failure(f"A {type(value).__name__} can't be passed: pass texts, numbers and objects", 13)
        return self._own(value)

    def _own(self, value: Any) -> Json:
        handle = self._handles.get(id(value))
        if handle is None:
            self._last_handle += 1
            handle = self._handles[id(value)] = self._last_handle
            self._objects[handle] = [value, 0]
        self._objects[handle][1] += 1
        told = {"process": handle, "class": type(value).__name__}
        if hasattr(value, "_corvane_page"):
            told["rows"] = value.count
        name = getattr(value, "_corvane_name", "")
        if name:
            told["name"] = name
        return told

    def decode(self, value: Json) -> Any:
        if not isinstance(value, dict):
            return value
        if "number" in value:
            return float(value["number"])
        if "process" in value:
            return self.own(value["process"])
        handle = value["host"]
        known = self._host_objects.get(handle)
        if known is None:
            known = self._host_objects[handle] = HostObject(handle, value.get("class", "Object"))
        object.__setattr__(known, "_received", known._received + 1)
        return known

    def knows(self, value: object) -> bool:
        """Whether the application has been given the object."""
        return id(value) in self._handles

    def own(self, handle: int) -> Any:
        """The object of the process that has that number."""
        held = self._objects.get(handle)
        if held is None:
            raise Failure(f"The process holds no object of the number {handle}", 5)
        return held[0]

    def release(self, handles: Json) -> None:
        """The application has released objects of the process, each so many times."""
        for handle, times in handles:
            held = self._objects.get(handle)
            if held is None:
                continue
            held[1] -= times
            if held[1] <= 0:
                del self._objects[handle]
                del self._handles[id(held[0])]


class EventAnswer:
    """What an event answers beyond one value."""

    def __init__(self, values: Dict[str, Any]) -> None:
        self.values = values

    def encoded(self, encode: Callable[[Any], Json]) -> Json:
        return {
            key: [[encode(part) for part in entry] if isinstance(entry, tuple) else encode(entry) for entry in value]
            if isinstance(value, list)
            else encode(value)
            for key, value in self.values.items()
        }
