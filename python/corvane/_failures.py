"""Failures, as procedures raise them and as messages have them."""

from __future__ import annotations

import linecache
import os
import traceback
from types import TracebackType
from typing import Any

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


def failure_in(told: Json) -> Failure:
    """What a message says."""
    return Failure(
        told.get("description", ""), told.get("number", FOREIGN), told.get("source", ""), told.get("details", "")
    )


def _is_ours(frame: TracebackType) -> bool:
    return os.path.dirname(frame.tb_frame.f_code.co_filename) == os.path.dirname(__file__)


def failure_of(error: BaseException, plugin: str) -> Json:
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
            "source": error.source or plugin,
            "details": details,
        }
    what = str(error)
    description = f"{type(error).__name__}: {what}" if what else type(error).__name__
    return {"number": FOREIGN, "description": description, "source": plugin, "details": text}
