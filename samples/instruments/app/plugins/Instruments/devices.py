"""Instruments, which are simulated here, and their calibration. Nothing of an application is in it."""

import json
import math
import os
import random
from dataclasses import asdict, dataclass
from pathlib import Path
from typing import Dict, List, Optional, Sequence, Tuple

#: For each kind of instrument its unit, a usual value, and the noise of a reading.
KINDS: Dict[str, Tuple[str, float, float]] = {
    "Thermometer": ("°C", 21.5, 0.05),
    "Balance": ("g", 12.03, 0.002),
    "pH meter": ("pH", 7.1, 0.01),
}


@dataclass
class Device:
    name: str
    kind: str = "Thermometer"
    note: str = ""
    slope: float = 1.0
    offset: float = 0.0
    taken: int = 0  # readings so far

    @property
    def unit(self) -> str:
        return KINDS[self.kind][0]

    def read_raw(self, value: Optional[float] = None) -> float:
        """What the device says of a known value, or of what it is at. A real one would be asked over its line here."""
        _, usual, noise = KINDS[self.kind]
        self.taken += 1
        chance = random.Random(f"{self.name} {self.taken}")
        if value is None:
            value = usual + 4 * noise * math.sin(self.taken / 15)
        return (value - noise) / 0.98 + chance.gauss(0, noise)

    def read(self) -> float:
        """The next reading, calibrated."""
        return self.slope * self.read_raw() + self.offset


@dataclass
class Line:
    """reference = slope * reading + offset"""

    slope: float
    offset: float
    residual: float  # standard deviation of the references around the line


def fit(readings: Sequence[float], references: Sequence[float]) -> Line:
    """By least squares. Needs two different readings."""
    count = len(readings)
    mean_x, mean_y = sum(readings) / max(count, 1), sum(references) / max(count, 1)
    spread = sum((x - mean_x) ** 2 for x in readings)
    if count < 2 or spread == 0:
        raise ValueError("A calibration needs two points with different readings")
    slope = sum((x - mean_x) * (y - mean_y) for x, y in zip(readings, references)) / spread
    offset = mean_y - slope * mean_x
    squares = sum((y - slope * x - offset) ** 2 for x, y in zip(readings, references))
    return Line(slope, offset, math.sqrt(squares / (count - 2)) if count > 2 else 0.0)


def data_folder() -> Path:
    chosen = os.environ.get("INSTRUMENTS_DATA")
    home = os.environ.get("XDG_DATA_HOME") or os.path.expanduser("~/.local/share")
    folder = Path(chosen) if chosen else Path(home) / "corvane" / "instruments"
    folder.mkdir(parents=True, exist_ok=True)
    return folder


class Cupboard:
    """The instruments, kept in a file that is written as a whole or not at all."""

    def __init__(self, folder: Path) -> None:
        self._file = folder / "instruments.json"
        self.devices: List[Device] = [Device("Bath", "Thermometer"), Device("Scales", "Balance")]
        if self._file.exists():
            self.devices = [Device(**entry) for entry in json.loads(self._file.read_text("utf-8"))]

    def save(self) -> None:
        new = self._file.with_suffix(".new")
        new.write_text(json.dumps([asdict(device) for device in self.devices], indent=2, ensure_ascii=False), "utf-8")
        os.replace(new, self._file)

    def has(self, name: str) -> bool:
        return any(device.name.casefold() == name.casefold() for device in self.devices)
