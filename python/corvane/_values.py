"""Values of forms that are more than a text or a number: pictures, and tables whose rows come in pages."""

from __future__ import annotations

import base64
import io
from typing import Any, Callable, List, Optional, Sequence

from ._failures import Json

Row = Sequence[Any]
Fetch = Callable[[int, int], Sequence[Row]]
Write = Callable[[int, str, Any], None]


def picture(source: Any) -> str:
    """The value of a field that shows a picture: a label of the form with ``kind`` "shown".

    The source is the bytes of a PNG, JPEG or SVG, the text of an SVG, or a figure of matplotlib.
    """
    if hasattr(source, "savefig"):
        drawn = io.BytesIO()
        source.savefig(drawn, format="svg")
        source = drawn.getvalue()
    if isinstance(source, str):
        source = source.encode()
    if not isinstance(source, (bytes, bytearray, memoryview)):
        raise TypeError(f"A picture is made of bytes, the text of an SVG or a figure, not of a {type(source).__name__}")
    content = bytes(source)
    if content.startswith(b"\x89PNG\r\n\x1a\n"):
        kind = "png"
    elif content.startswith(b"\xff\xd8\xff"):
        kind = "jpeg"
    elif b"<svg" in content[:2000]:
        kind = "svg+xml"
    else:
        raise ValueError("These bytes are no PNG, JPEG or SVG")
    return f"data:image/{kind};base64,{base64.b64encode(content).decode()}"


class Rows:
    """The rows of a table in a form: the application asks for those that come into sight, some hundred at a time.

    ``columns`` are the names of the table's columns, ``fetch(first, count)`` returns rows from a place on, counted from
    0, with a value for each column. ``write(row, column, value)`` gets what the user enters into a cell. A table that
    has changed is another ``Rows``, or the same with another ``count``; ``self.form.refresh`` shows it.
    """

    _corvane_kind = "object"

    def __init__(self, columns: Sequence[str], count: int, fetch: Fetch, write: Optional[Write] = None) -> None:
        self.columns = list(columns)
        self.count = count
        self._fetch = fetch
        self._write = write

    @classmethod
    def of(cls, columns: Sequence[str], rows: Sequence[Row]) -> Rows:
        """Of rows that are there already."""
        return cls(columns, len(rows), lambda first, count: rows[first : first + count])

    def _corvane_page(self, first: int, count: int, encode: Callable[[Any], Json]) -> Json:
        rows = self._fetch(first, min(count, self.count - first))
        values: List[List[Json]] = [[encode(value) for value in row] for row in rows]
        return {"columns": self.columns, "values": values}

    def _corvane_write(self, row: int, column: str, value: Any) -> None:
        if self._write is None:
            raise TypeError("These rows can't be changed")
        self._write(row, column, value)
