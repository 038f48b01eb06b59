"""The process's side of the protocol: it answers the application's requests and sends its own (docs/protocol.md)."""

from __future__ import annotations

import asyncio
import inspect
import json
import logging
import os
import socket
import sys
import threading
from typing import Any, Callable, Coroutine, Dict, List, Optional, Tuple, Type

from ._failures import Failure, Json, failure_in, failure_of
from ._members import ClassInfo, Member, all_classes
from ._passed import EventAnswer, HostObject, PassedObjects
from ._wire import Wire

PROTOCOL = 1


class Runtime:
    def __init__(self) -> None:
        self.wire = Wire()
        self.passed = PassedObjects()
        self.plugin = ""
        self.folder = ""
        self.released: List[Tuple[int, int]] = []
        self._last_id = 0
        self._answers: Dict[int, Json] = {}
        self._waiting: List[int] = []
        self._members: Dict[str, Dict[str, Member]] = {}
        self._infos: Dict[Type[Any], ClassInfo] = {}
        self.thread = threading.get_ident()
        self.jobs: Dict[int, Any] = {}  # those that have been started and haven't ended
        self._last_job = 0
        self._tasks: "set[asyncio.Task[Any]]" = set()
        self._loop: Optional[asyncio.AbstractEventLoop] = None

    # What it is made of.

    def info(self, described: Type[Any]) -> ClassInfo:
        found = self._infos.get(described)
        if found is None:
            found = self._infos[described] = ClassInfo(described)
        return found

    def hello(self) -> Json:
        classes = [self.info(c).described() for c in all_classes()]
        version = ".".join(str(number) for number in sys.version_info[:3])
        return {"hello": "corvane", "protocol": PROTOCOL, "language": "Python " + version, "classes": classes}

    # Requests to the application.

    def send(self, message: Json) -> None:
        if self.released:  # behind the message, which may still name them
            released, self.released = self.released, []
            self.wire.send(message, {"release": released})
        else:
            self.wire.send(message)

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
                self.handle(self.wire.next())
        finally:
            self._waiting.remove(number)
            self._handle_rest_soon()
        answer = self._answers.pop(number)
        if answer.get("failure") is not None:
            raise failure_in(answer["failure"])
        return answer.get("result")

    def call(self, on: HostObject, name: str, *arguments: object) -> Any:
        if threading.get_ident() != self.thread:
            return self.in_main_thread(lambda: self.call(on, name, *arguments))
        values = [self.passed.encode(argument) for argument in arguments]
        return self.passed.decode(self.ask({"on": on._handle, "call": name, "arguments": values}))

    def set(self, on: HostObject, name: str, value: object) -> None:
        if threading.get_ident() != self.thread:
            self.in_main_thread(lambda: self.set(on, name, value))
        else:
            self.ask({"on": on._handle, "set": name, "value": self.passed.encode(value)})

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
            self.passed.release(message["release"])
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
            return {"id": request["id"], "failure": failure_of(error, self.plugin)}

    def _served(self, request: Json) -> Json:
        if "create" in request:
            wanted = request["create"].lower()
            for c in all_classes():
                if c.__name__.lower() == wanted:
                    return self.passed.encode(c())
            raise Failure(f"There is no class {request['create']}", 429)
        target = self.passed.own(request["on"])
        if "event" in request:
            function = getattr(target, self.info(type(target)).events[request["event"]])
            return self._event_answer(self._run(function, [self.passed.decode(a) for a in request["arguments"]]))
        if "get" in request:
            return [self._got(target, name) for name in request["get"]]
        if "put" in request:
            for name, value in request["put"]:
                self._set(target, name, self.passed.decode(value))
            return None
        if "rows" in request:
            return target._corvane_page(*request["rows"], self.passed.encode)
        if "row" in request:
            return target._corvane_write(request["row"], request["column"], self.passed.decode(request["value"]))
        if "set" in request:
            self._set(target, request["set"], self.passed.decode(request["value"]))
            return None
        return self.passed.encode(self._called(target, request["call"], [self.passed.decode(a) for a in request["arguments"]]))

    def _event_answer(self, answer: Any) -> Json:
        return answer.encoded(self.passed.encode) if isinstance(answer, EventAnswer) else self.passed.encode(answer)

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
            return {"value": self.passed.encode(self._called(target, name, []))}
        except Exception as error:  # noqa: BLE001 -- asked for by itself it says why
            return {"failure": failure_of(error, self.plugin)}

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
        self.wire.take("job", self._handle_job)
        self._handle_rest_soon()

    def _task_ends(self, task: "asyncio.Task[Any]") -> None:
        self._tasks.discard(task)
        error = None if task.cancelled() else task.exception()
        if error is not None:
            self.send({"report": failure_of(error, self.plugin)})

    def serve(self) -> None:
        """Until the application ends."""
        while True:
            if not self._tasks or self.wire.has_next():
                self.handle(self.wire.next())
                continue
            assert self._loop is not None and self.wire.socket is not None
            loop = self._loop
            loop.add_reader(self.wire.socket.fileno(), self._readable)
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
                loop.remove_reader(self.wire.socket.fileno())

    def _readable(self) -> None:
        self.wire.receive()
        self._handle_rest()

    def _handle_rest(self) -> None:
        while self.wire.has_next():
            self.handle(self.wire.next())

    def _handle_rest_soon(self) -> None:
        """What came behind an answer makes the socket readable no more; a loop that runs would wait for the next."""
        if self._loop is not None and self._loop.is_running() and self.wire.has_next():
            self._loop.call_soon(self._handle_rest)


async def _first_of(tasks: "set[asyncio.Task[Any]]") -> None:
    await asyncio.wait(tasks, return_when=asyncio.FIRST_COMPLETED)


runtime = Runtime()
HostObject._application = runtime
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
    runtime.wire.socket = socket.socket(fileno=int(descriptor))
    runtime.send(runtime.hello())
    runtime.serve()
