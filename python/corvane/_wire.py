"""Messages of one line of JSON each, over the socket that the application has opened."""

from __future__ import annotations

import json
import os
import select
import socket
import threading
from typing import Callable, List, Optional

from ._failures import Failure, Json


class Wire:
    def __init__(self) -> None:
        self.socket: Optional[socket.socket] = None
        self._buffer = bytearray()
        self._lines: List[bytes] = []
        self._sending = threading.Lock()

    def send(self, *messages: Json) -> None:
        if self.socket is None:
            raise Failure("There is no application: the program wasn't started by one")
        text = "".join(json.dumps(message, ensure_ascii=False, allow_nan=False) + "\n" for message in messages)
        try:
            with self._sending:
                self.socket.sendall(text.encode("utf-8", "replace"))
        except OSError:
            os._exit(0)  # the application is gone

    def receive(self) -> None:
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

    def next(self) -> Json:
        """The next message, which is waited for."""
        while not self._lines:
            self.receive()
        return json.loads(self._lines.pop(0))

    def has_next(self) -> bool:
        return bool(self._lines)

    def take(self, key: str, handle: Callable[[Json], None]) -> None:
        """Takes the messages with that key that have come, without waiting; all others have their turn later."""
        if self.socket is None:
            return
        if select.select([self.socket], [], [], 0)[0]:
            self.receive()
        quoted = json.dumps(key).encode()
        waiting = []
        for line in self._lines:
            message = json.loads(line) if quoted in line else {}
            if key in message and "id" not in message:
                handle(message)
            else:
                waiting.append(line)
        self._lines[:] = waiting
