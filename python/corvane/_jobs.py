"""Work that takes time: procedures that go on while the user does, as jobs with progress and "Cancel"."""

from __future__ import annotations

import asyncio
import functools
import inspect
import threading
import time
from typing import Any, Awaitable, Callable, Dict, List, Optional, Sequence, Tuple

from . import _runtime
from ._failures import Json, failure_of
from ._passed import HOST, HostObject
from ._runtime import runtime

_INTERVAL = 0.05  # seconds between two reports, and between two looks for a cancellation


class JobCancelled(asyncio.CancelledError):
    """Ends a job that the user has cancelled. Not an error: ``except Exception`` lets it pass."""


class Progress:
    """What a job reports, and learns, while it runs; usable from any thread. All of it is cheap enough for a loop."""

    def __init__(self, number: int) -> None:
        self._number = number
        self._cancelled = False
        self._news: Dict[str, Json] = {}
        self._sent = 0.0
        self._looked = 0.0
        self._lock = threading.Lock()

    def set_part(self, part: float, of: float = 1.0) -> None:
        """What is done: 0.4, or 2 of 5."""
        self._report("part", min(max(part / of, 0.0), 1.0) if of > 0 else 0.0)

    def set_text(self, text: str) -> None:
        """What is being done now, in a few words."""
        self._report("text", text)

    def log(self, line: str) -> None:
        """A line for the details."""
        with self._lock:
            self._news.setdefault("log", []).append(line)
        self._send_sometimes()

    @property
    def is_cancelled(self) -> bool:
        """Whether the job is to end. An ``async`` one learns it at its next ``await`` as well."""
        if not self._cancelled and threading.get_ident() == runtime.thread:
            now = time.monotonic()
            if now - self._looked > _INTERVAL:
                self._looked = now
                runtime.look_for_jobs()
        return self._cancelled

    def stop_if_cancelled(self) -> None:
        """Leaves the job by JobCancelled when it is to end."""
        if self.is_cancelled:
            raise JobCancelled

    def _report(self, key: str, value: Json) -> None:
        with self._lock:
            self._news[key] = value
        self._send_sometimes()

    def _send_sometimes(self) -> None:
        if time.monotonic() - self._sent > _INTERVAL:
            self._send()

    def _send(self, **more: Json) -> None:
        with self._lock:
            message = {"job": self._number, **self._news, **more}
            self._news = {}
            self._sent = time.monotonic()
        if len(message) > 1:
            runtime.send(message)


Work = Callable[[Progress], Awaitable[Any]]


class Job:
    def __init__(self, number: int, work: Work, in_thread: bool) -> None:
        self.progress = Progress(number)
        self._work = work
        self._in_thread = in_thread
        self.task: Optional[asyncio.Task[Any]] = None

    def begin(self) -> None:
        if self.task is None:
            self.task = runtime.add_task(self._run())

    def cancel(self) -> bool:
        """False for one that hasn't begun, and never will."""
        self.progress._cancelled = True
        if self.task is not None and not self._in_thread:
            self.task.cancel()
        return self.task is not None

    async def _run(self) -> None:
        try:
            await self._work(self.progress)
        except asyncio.CancelledError:
            self.progress._send(end="cancelled")
        except Exception as error:  # noqa: BLE001 -- all of them become the job's failure
            self.progress._send(end="failed", failure=failure_of(error, runtime.plugin))
        else:
            self.progress._send(end="done")
        finally:
            runtime.jobs.pop(self.progress._number, None)


async def _in_thread(function: Callable[[], Any]) -> Any:
    """In a thread that doesn't keep the process from ending."""
    loop = asyncio.get_running_loop()
    future: asyncio.Future[Any] = loop.create_future()

    def settle(result: Any, error: Optional[BaseException]) -> None:
        if future.done():
            return
        if error is None:
            future.set_result(result)
        else:
            future.set_exception(error)

    def run() -> None:
        result: Any = None
        error: Optional[BaseException] = None
        try:
            result = function()
        except JobCancelled as cancelled:
            error = cancelled
        except BaseException as caught:  # noqa: BLE001 -- passed on
            error = caught if isinstance(caught, Exception) else RuntimeError(f"The thread of the job ended: {caught!r}")
        try:
            loop.call_soon_threadsafe(settle, result, error)
        except RuntimeError:
            pass  # the process ends

    threading.Thread(target=run, daemon=True).start()
    return await future


class JobSettings:
    """How a procedure becomes a job."""

    def __init__(self, title: str, can_cancel: bool, quiet: bool, reads: Sequence[str], writes: Sequence[str]) -> None:
        self.title = title
        self.can_cancel = can_cancel
        self.quiet = quiet
        self.reads = "\n".join(reads)
        self.writes = "\n".join(writes)


def start(owner: object, procedure: str, settings: JobSettings, title: str, work: Work, in_thread: bool) -> None:
    number = runtime.new_job()
    runtime.jobs[number] = Job(number, work, in_thread)
    s = settings
    try:
        host = HostObject(HOST, "Host")
        told = (owner, number, title, s.can_cancel, s.quiet, s.reads, s.writes, procedure)
        runtime.call(host, "StartJob", *told)
    except BaseException:
        runtime.jobs.pop(number, None)
        raise


def job(
    title: str = "",
    *,
    can_cancel: bool = True,
    quiet: bool = False,
    reads: Sequence[str] = (),
    writes: Sequence[str] = (),
) -> Callable[[Callable[..., Any]], Callable[..., None]]:
    """Makes a procedure a job: a call of it returns at once, and its body runs beside the user's own work.

    A plain function runs in a thread of its own, one that is ``async`` in the main thread, between its ``await``s. A
    parameter ``progress`` gets the job's Progress; no caller passes it. The title is what the user reads and may name
    parameters and attributes, as in ``@corvane.job("Measure {self.name}")``; without one it comes of the procedure's
    name. ``quiet`` is for work that no user has asked for. Jobs that use the same thing say so: one that ``writes`` it
    waits for all earlier ones that read or write it.
    """
    settings = JobSettings(title, can_cancel, quiet, reads, writes)

    def decorate(function: Callable[..., Any]) -> Callable[..., None]:
        @functools.wraps(function)
        def started(self: Any, *arguments: Any, **named: Any) -> None:
            start_procedure(self, function, settings, arguments, named)

        started._corvane_job = True  # type: ignore[attr-defined]
        return started

    return decorate


def start_procedure(
    owner: Any, function: Callable[..., Any], settings: JobSettings, arguments: Tuple[Any, ...], named: Dict[str, Any]
) -> None:
    signature = inspect.signature(function)
    wants_progress = "progress" in signature.parameters
    title = settings.title
    if title:
        bound = signature.bind_partial(owner, *arguments, **named).arguments
        title = title.format(**bound)
    else:
        title = title_of(function.__name__)
    is_async = inspect.iscoroutinefunction(function)

    async def work(progress: Progress) -> None:
        given = {**named, "progress": progress} if wants_progress else named
        call = functools.partial(function, owner, *arguments, **given)
        if is_async:
            await call()
        else:
            await _in_thread(call)

    start(owner, f"{type(owner).__name__}.{function.__name__}", settings, title, work, not is_async)


def title_of(procedure: str) -> str:
    """ "Find birds" of "OnFindBirds"."""
    name = procedure[2:] if procedure.startswith("On") and procedure[2:3].isupper() else procedure
    words: List[str] = []
    for letter in name.replace("_", " "):
        words.append(" " + letter.lower() if letter.isupper() and words and words[-1][-1].islower() else letter)
    text = "".join(words).strip() or procedure
    return text[:1].upper() + text[1:]


PLAIN = JobSettings("", True, False, (), ())

_runtime.start_procedure = start_procedure
_runtime.plain_settings = PLAIN
