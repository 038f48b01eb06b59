"""Series of readings: files of comma-separated values, what is computed of them, and their plot."""

import csv
import io
import math
import os
import random
import statistics
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, List, Tuple


@dataclass
class Series:
    name: str
    unit: str
    readings: List[Tuple[float, float]] = field(default_factory=list)  # seconds since the first one, and value
    note: str = ""

    @property
    def values(self) -> List[float]:
        return [value for _, value in self.readings]

    def summary(self) -> str:
        values = self.values
        if not values:
            return "No readings"
        spread = statistics.stdev(values) if len(values) > 1 else 0.0
        middle, least, most = statistics.fmean(values), min(values), max(values)
        return f"{len(values)} readings, mean {middle:.5g} {self.unit}, s {spread:.2g}, {least:.5g} to {most:.5g}"

    def slope(self) -> float:
        """Units a second, by least squares."""
        times = [time for time, _ in self.readings]
        middle = statistics.fmean(times)
        spread = sum((time - middle) ** 2 for time in times)
        return sum((time - middle) * value for time, value in self.readings) / spread if spread else 0.0

    def drift(self, rounds: int, report: Callable[[int], None]) -> Tuple[float, float]:
        """The slope, and how often chance alone gives one as steep: readings are shuffled that often."""
        observed = self.slope()
        chance = random.Random(len(self.readings))
        values = self.values
        steep = 0
        for done in range(rounds):
            report(done)
            chance.shuffle(values)
            shuffled = Series("", "", [(time, value) for (time, _), value in zip(self.readings, values)])
            steep += abs(shuffled.slope()) >= abs(observed)
        return observed, (steep + 1) / (rounds + 1)

    def to_text(self) -> str:
        out = io.StringIO()
        writer = csv.writer(out, lineterminator="\n")
        writer.writerow(["Time (s)", f"Value ({self.unit})", self.note])
        writer.writerows(self.readings)
        return out.getvalue()

    @classmethod
    def from_text(cls, name: str, text: str) -> "Series":
        """Fails with ValueError, naming the line that isn't two numbers."""
        rows = list(csv.reader(io.StringIO(text)))
        if not rows or len(rows[0]) < 2:
            raise ValueError("The first line has no titles for time and value")
        title = rows[0][1]
        unit = title[title.find("(") + 1 : -1] if title.endswith(")") and "(" in title else ""
        series = cls(name, unit, note=rows[0][2] if len(rows[0]) > 2 else "")
        for number, row in enumerate(rows[1:], 2):
            try:
                time, value = float(row[0]), float(row[1])
            except (IndexError, ValueError):
                raise ValueError(f"Line {number} isn't a time and a value: {','.join(row)}") from None
            if not math.isfinite(time) or not math.isfinite(value):
                raise ValueError(f"Line {number} has no finite number")
            series.readings.append((time, value))
        return series


class Shelf:
    """A folder with a file for each series, written as a whole or not at all."""

    def __init__(self, folder: Path) -> None:
        self._folder = folder
        folder.mkdir(parents=True, exist_ok=True)

    def names(self) -> List[str]:
        return sorted((file.stem for file in self._folder.glob("*.csv")), key=str.casefold)

    def file(self, name: str) -> Path:
        return self._folder / f"{name}.csv"

    def read(self, name: str) -> Series:
        return Series.from_text(name, self.file(name).read_text("utf-8"))

    def write(self, series: Series) -> None:
        new = self.file(series.name).with_suffix(".new")
        new.write_text(series.to_text(), "utf-8")
        os.replace(new, self.file(series.name))

    def free_name(self, wanted: str) -> str:
        """The name, with a number behind it when there is a series of that name."""
        plain = "".join("-" if letter in '/\\:\0' else letter for letter in wanted).strip(" .") or "Series"
        taken = {name.casefold() for name in self.names()}
        name, number = plain, 2
        while name.casefold() in taken:
            name, number = f"{plain} {number}", number + 1
        return name


def shelf_folder() -> Path:
    chosen = os.environ.get("INSTRUMENTS_DATA")
    home = os.environ.get("XDG_DATA_HOME") or os.path.expanduser("~/.local/share")
    return (Path(chosen) if chosen else Path(home) / "corvane" / "instruments") / "series"
