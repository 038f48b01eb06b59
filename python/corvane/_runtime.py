"""The process's side of the protocol: it answers the application's requests and sends its own (docs/protocol.md)."""

from __future__ import annotations

import asyncio
import functools
import inspect
import json
import linecache
import logging
import math
import os
import select
import socket
import sys
import threading
import traceback
import weakref
from types import TracebackType
from typing import Any, Callable, Coroutine, Dict, Iterator, List, Optional, Tuple, Type, Union

PROTOCOL = 1
ROOT = 1
HOST = 2
OBJECT_ERROR_BASE = -2147221504
FOREIGN = -2147467259

Json = Any


class Failure(Exception):
    """What went wrong, in words for the user, with a number; raised by calls of the application, too.

    One that a procedure raises is shown to the user as it is. Numbers of your own begin behind OBJECT_ERROR_BASE.
    """

    def __init__(
        self, description: str, number: int = OBJECT_ERROR_BASE + 1, source: str = "", details: str = ""
    ) -> None:
        super().__init__(description)
        self.description = description
        self.number = number
        self.source = source
        self.details = details


class HostObject:
    """An object of the application. Its members are read, set and called under their names in any case."""

    __slots__ = ("__weakref__", "_class_name", "_handle", "_received")

    def __init__(self, handle: int, class_name: str) -> None:
        object.__setattr__(self, "_handle", handle)
        object.__setattr__(self, "_class_name", class_name)
        object.__setattr__(self, "_received", 0)

    def __getattr__(self, name: str) -> Any:
        if name.startswith("_"):
            raise AttributeError(name)
        member = self._member(name)
        if member is None or member.is_property:
            return runtime.call(self, name)
        return functools.partial(runtime.call, self, name)

    def __setattr__(self, name: str, value: object) -> None:
        if name.startswith("_"):
            raise AttributeError(f"{name} can't be set")
        runtime.set(self, name, value)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, HostObject) and other._handle == self._handle

    def __hash__(self) -> int:
        return hash(self._handle)

    def __repr__(self) -> str:
        return f"<{self._class_name} {self._handle}>"

    def __dir__(self) -> List[str]:
        return [member.name for member in runtime.members(self).values()]

    def __len__(self) -> int:
        return int(self.Count)

    def __bool__(self) -> bool:
        return True

    def __iter__(self) -> Iterator[Any]:
        for position in range(1, len(self) + 1):
            yield runtime.call(self, "Item", position)

    def __getitem__(self, key: Union[str, int]) -> Any:
        return runtime.call(self, "Item", key)

    def __contains__(self, key: object) -> bool:
        return bool(runtime.call(self, "HasKey", key))

    def __del__(self) -> None:
        if self._handle > HOST and self._received:
            runtime.released.append((self._handle, self._received))

    def _member(self, name: str) -> Optional[Member]:
        """Nothing of an object whose members aren't listed, and which may have any."""
        members = runtime.members(self)
        member = members.get(name.lower())
        if member is None and members:
            raise AttributeError(f"{self._class_name} has no member {name}")
        return member


class Member:
    """A member of a class, of the application or of the process."""

    __slots__ = ("function", "is_property", "is_stored", "is_writable", "least", "most", "name")

    def __init__(self, name: str, is_property: bool, is_writable: bool, function: Any = None) -> None:
        self.name = name
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
            for name in vars(owner).get("__annotations__", {}):
                if not name.startswith("_"):
                    self.members[name.lower()] = Member(name, True, True)
            for name, value in vars(owner).items():
                if name.startswith("_") or name[:2] == "On" and name[2:] in known:
                    continue
                if isinstance(value, property):
                    self.members[name.lower()] = Member(name, True, value.fset is not None, value)
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


class Runtime:
    def __init__(self) -> None:
        self.socket: Optional[socket.socket] = None
        self.plugin = ""
        self.folder = ""
        self.released: List[Tuple[int, int]] = []
        self._buffer = bytearray()
        self._lines: List[bytes] = []
        self._last_id = 0
        self._answers: Dict[int, Json] = {}
        self._waiting: List[int] = []
        self._host_objects: "weakref.WeakValueDictionary[int, HostObject]" = weakref.WeakValueDictionary()
        self._members: Dict[str, Dict[str, Member]] = {}
        self._objects: Dict[int, List[Any]] = {}  # by handle: the object, and how often it has been sent
        self._handles: Dict[int, int] = {}  # by identity
        self._last_handle = 0
        self._infos: Dict[Type[Any], ClassInfo] = {}
        self.thread = threading.get_ident()
        self.jobs: Dict[int, Any] = {}  # those that have been started and haven't ended
        self._last_job = 0
        self._sending = threading.Lock()
        self._tasks: "set[asyncio.Task[Any]]" = set()
        self._loop: Optional[asyncio.AbstractEventLoop] = None

    # What it is made of.

    def info(self, described: Type[Any]) -> ClassInfo:
        found = self._infos.get(described)
        if found is None:
            found = self._infos[described] = ClassInfo(described)
        return found

    def hello(self) -> Json:
        classes = [self.info(c).described() for c in _classes()]
        version = ".".join(str(number) for number in sys.version_info[:3])
        return {"hello": "corvane", "protocol": PROTOCOL, "language": "Python " + version, "classes": classes}

    # The wire.

    def send(self, message: Json) -> None:
        if self.socket is None:
            raise Failure("There is no application: the program wasn't started by one")
        text = json.dumps(message, ensure_ascii=False, allow_nan=False) + "\n"
        if self.released:  # behind the message, which may still name them
            released, self.released = self.released, []
            text += json.dumps({"release": released}) + "\n"
        try:
            with self._sending:
                self.socket.sendall(text.encode("utf-8", "replace"))
        except OSError:
            os._exit(0)  # the application is gone

    def _receive(self) -> None:
        """Waits for bytes, and takes the lines that they complete."""
        assert self.socket is not None
        try:
            piece = self.socket.recv(1 << 16)
        except OSError:
            piece = b""
        if not piece:
            raise SystemExit(0)
        self._buffer += piece
        if b"\n" in piece:
            *lines, rest = self._buffer.split(b"\n")
            self._buffer = bytearray(rest)
            self._lines.extend(lines)

    def _next(self) -> Json:
        while not self._lines:
            self._receive()
        return json.loads(self._lines.pop(0))

    # Requests to the application.

    def in_main_thread(self, function: Callable[[], Any]) -> Any:
        """Objects of the application belong to the main thread, which does for others what they ask."""
        if threading.get_ident() == self.thread:
            return function()
        if self._loop is None:
            raise Failure("Only the main thread and threads of jobs speak to the application")
        done = threading.Event()
        outcome: List[Any] = [None, None]

        def run() -> None:
            try:
                outcome[0] = function()
            except BaseException as error:  # noqa: BLE001 -- raised where it was asked
                outcome[1] = error
            done.set()

        self._loop.call_soon_threadsafe(run)
        done.wait()
        if outcome[1] is not None:
            raise outcome[1]
        return outcome[0]

    def ask(self, request: Json) -> Json:
        if threading.get_ident() != self.thread:
            return self.in_main_thread(lambda: self.ask(request))
        self._last_id += 1
        number = self._last_id
        request["id"] = number
        self.send(request)
        self._waiting.append(number)
        try:
            while number not in self._answers:
                self.handle(self._next())
        finally:
            self._waiting.remove(number)
        answer = self._answers.pop(number)
        failure = answer.get("failure")
        if failure is not None:
            raise Failure(
                failure.get("description", ""),
                failure.get("number", FOREIGN),
                failure.get("source", ""),
                failure.get("details", ""),
            )
        return answer.get("result")

    def call(self, on: HostObject, name: str, *arguments: object) -> Any:
        if threading.get_ident() != self.thread:
            return self.in_main_thread(lambda: self.call(on, name, *arguments))
        values = [self.encode(argument) for argument in arguments]
        return self.decode(self.ask({"on": on._handle, "call": name, "arguments": values}))

    def set(self, on: HostObject, name: str, value: object) -> None:
        if threading.get_ident() != self.thread:
            self.in_main_thread(lambda: self.set(on, name, value))
        else:
            self.ask({"on": on._handle, "set": name, "value": self.encode(value)})

    def members(self, on: HostObject) -> Dict[str, Member]:
        found = self._members.get(on._class_name)
        if found is None:
            described = self.ask({"on": on._handle, "members": True})
            found = {
                told["name"].lower(): Member(told["name"], bool(told.get("property")), bool(told.get("writable")))
                for told in described
            }
            self._members[on._class_name] = found
        return found

    # Requests of the application.

    def handle(self, message: Json) -> None:
        if "result" in message or "failure" in message:
            self._answers[message["id"]] = message
        elif "job" in message:
            self._handle_job(message)
        elif "release" in message:
            self._release(message["release"])
        elif "hello" in message:
            self.plugin, self.folder = message.get("plugin", ""), message.get("folder", "")
            if message.get("protocol") != PROTOCOL:
                raise SystemExit(f"The application speaks version {message.get('protocol')} of the protocol, not {PROTOCOL}")
        else:
            self.send(self._answered(message))

    def _answered(self, request: Json) -> Json:
        try:
            return {"id": request["id"], "result": self._served(request)}
        except Exception as error:  # noqa: BLE001 -- all of them become failures
            return {"id": request["id"], "failure": failure_of(error)}

    def _served(self, request: Json) -> Json:
        if "create" in request:
            wanted = request["create"].lower()
            for c in _classes():
                if c.__name__.lower() == wanted:
                    return self.encode(c())
            raise Failure(f"There is no class {request['create']}", 429)
        target = self._object(request["on"])
        if "event" in request:
            function = getattr(target, self.info(type(target)).events[request["event"]])
            return self._event_answer(self._run(function, [self.decode(a) for a in request["arguments"]]))
        if "get" in request:
            return [self._got(target, name) for name in request["get"]]
        if "put" in request:
            for name, value in request["put"]:
                self._set(target, name, self.decode(value))
            return None
        if "rows" in request:
            return target._corvane_page(*request["rows"], self.encode)
        if "row" in request:
            return target._corvane_write(request["row"], request["column"], self.decode(request["value"]))
        if "set" in request:
            self._set(target, request["set"], self.decode(request["value"]))
            return None
        return self.encode(self._called(target, request["call"], [self.decode(a) for a in request["arguments"]]))

    def _event_answer(self, answer: Any) -> Json:
        return answer.encoded(self.encode) if isinstance(answer, EventAnswer) else self.encode(answer)

    def _called(self, target: Any, name: str, arguments: List[Any]) -> Any:
        member = self.info(type(target)).members.get(name.lower())
        if member is None:
            value = getattr(target, name, None) if not name.startswith("_") else None
            if value is None or callable(value) or arguments:
                raise Failure(f'An object of class "{type(target).__name__}" has no member "{name}"', 438)
            return value
        if not member.least <= len(arguments) <= member.most:
            raise Failure(
                f'"{member.name}" of class "{type(target).__name__}" takes {member.least} arguments '
                f"and was given {len(arguments)}",
                450,
            )
        if member.is_property:
            return getattr(target, member.name)
        if inspect.iscoroutinefunction(member.function):
            start_procedure(target, member.function, plain_settings, tuple(arguments), {})
            return None
        return self._run(getattr(target, member.name), arguments)

    def _got(self, target: Any, name: str) -> Json:
        try:
            return {"value": self.encode(self._called(target, name, []))}
        except Exception as error:  # noqa: BLE001 -- asked for by itself it says why
            return {"failure": failure_of(error)}

    def _set(self, target: Any, name: str, value: Any) -> None:
        member = self.info(type(target)).members.get(name.lower())
        if member is None or not member.is_writable:
            raise Failure(f'An object of class "{type(target).__name__}" has no property "{name}" to be written', 438)
        setattr(target, member.name, value)

    def _run(self, function: Callable[..., Any], arguments: List[Any]) -> Any:
        """A coroutine goes on by itself, while the application does, too."""
        result = function(*arguments)
        if not inspect.iscoroutine(result):
            return result
        self.add_task(result)
        return None

    def add_task(self, coroutine: Coroutine[Any, Any, Any]) -> asyncio.Task[Any]:
        if self._loop is None:
            self._loop = asyncio.new_event_loop()
        task = self._loop.create_task(coroutine)
        self._tasks.add(task)
        task.add_done_callback(self._task_ends)
        return task

    # Jobs.

    def new_job(self) -> int:
        self._last_job += 1
        return self._last_job

    def _handle_job(self, message: Json) -> None:
        job = self.jobs.get(message["job"])
        if job is None:
            return
        if message.get("cancel"):
            if not job.cancel():
                del self.jobs[message["job"]]
        elif message.get("begin"):
            job.begin()

    def look_for_jobs(self) -> None:
        """Takes what the application has sent about jobs, without waiting; everything else has its turn later."""
        if self.socket is None:
            return
        if select.select([self.socket], [], [], 0)[0]:
            self._receive()
        waiting = []
        for line in self._lines:
            message = json.loads(line) if b'"job"' in line else {}
            if "job" in message and "id" not in message:
                self._handle_job(message)
            else:
                waiting.append(line)
        self._lines[:] = waiting

    def _task_ends(self, task: "asyncio.Task[Any]") -> None:
        self._tasks.discard(task)
        error = None if task.cancelled() else task.exception()
        if error is not None:
            self.send({"report": failure_of(error)})

    def serve(self) -> None:
        """Until the application ends."""
        while True:
            if not self._tasks:
                self.handle(self._next())
                continue
            assert self._loop is not None and self.socket is not None
            loop = self._loop
            loop.add_reader(self.socket.fileno(), self._readable)
            waiting = loop.create_task(_first_of(set(self._tasks)))
            try:
                loop.run_until_complete(waiting)
            except SystemExit:
                left = [waiting, *self._tasks]
                for task in left:
                    task.cancel()
                loop.run_until_complete(asyncio.gather(*left, return_exceptions=True))
                raise
            finally:
                loop.remove_reader(self.socket.fileno())

    def _readable(self) -> None:
        self._receive()
        while self._lines:
            self.handle(json.loads(self._lines.pop(0)))

    # Values.

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
        return self._encode_own(value)

    def _encode_own(self, value: Any) -> Json:
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
            return self._object(value["process"])
        handle = value["host"]
        known = self._host_objects.get(handle)
        if known is None:
            known = self._host_objects[handle] = HostObject(handle, value.get("class", "Object"))
        object.__setattr__(known, "_received", known._received + 1)
        return known

    def _object(self, handle: int) -> Any:
        held = self._objects.get(handle)
        if held is None:
            raise Failure(f"The process holds no object of the number {handle}", 5)
        return held[0]

    def _release(self, handles: Json) -> None:
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


async def _first_of(tasks: "set[asyncio.Task[Any]]") -> None:
    await asyncio.wait(tasks, return_when=asyncio.FIRST_COMPLETED)


def _classes() -> List[Type[Any]]:
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


def _is_ours(frame: TracebackType) -> bool:
    return os.path.dirname(frame.tb_frame.f_code.co_filename) == os.path.dirname(__file__)


def failure_of(error: BaseException) -> Json:
    """A failure as the application gets it, with the trace in its details."""
    trace = error.__traceback__
    while trace is not None and _is_ours(trace) and trace.tb_next is not None:
        trace = trace.tb_next
    linecache.checkcache()
    if trace is not None and _is_ours(trace):
        trace = None  # the failure says all
    text = "" if trace is None else "".join(traceback.format_exception(type(error), error, trace)).strip()
    most = 2000
    if len(text) > most:
        text = "…" + text[-most:]
    if isinstance(error, Failure):
        details = "\n".join(part for part in (error.details, text) if part)
        return {
            "number": error.number,
            "description": error.description,
            "source": error.source or runtime.plugin,
            "details": details,
        }
    what = str(error)
    description = f"{type(error).__name__}: {what}" if what else type(error).__name__
    return {"number": FOREIGN, "description": description, "source": runtime.plugin, "details": text}


runtime = Runtime()
start_procedure: Callable[..., None]  # of _jobs
plain_settings: Any


def run() -> None:
    """Serves the application until it ends. The last line of a service's program."""
    if os.environ.get("CORVANE_DESCRIBE"):
        json.dump(runtime.hello(), sys.stdout, indent=2)
        print()
        return
    descriptor = os.environ.pop("CORVANE_SOCKET", "")
    if not descriptor.isdigit():
        raise SystemExit("This is a service of a Corvane application, which starts it; corvane run APP runs one")
    for stream in (sys.stdout, sys.stderr):
        if hasattr(stream, "reconfigure"):
            stream.reconfigure(line_buffering=True, errors="backslashreplace")
    logging.basicConfig(level=logging.INFO, format="%(levelname)s %(name)s: %(message)s")
    sys.setrecursionlimit(max(sys.getrecursionlimit(), 8000))
    os.set_inheritable(int(descriptor), False)
    runtime.thread = threading.get_ident()
    runtime.socket = socket.socket(fileno=int(descriptor))
    runtime.send(runtime.hello())
    runtime.serve()
