"""The service Instruments: what the explorer's tab Instruments shows, and its windows."""

import asyncio
from typing import List, Optional, Tuple

import corvane
from devices import KINDS, Cupboard, Device, Line, data_folder, fit

cupboard = Cupboard(data_folder())
OK = 1  # the window's command


class Instrument(corvane.Item):
    def __init__(self, device: Device) -> None:
        super().__init__(device.name)
        self.device = device

    def OnDisplayName(self, text: str) -> str:
        return f"{self.name} ({self.device.unit})"

    def OnAfterRename(self, name: str) -> None:
        self.device.name = name
        cupboard.save()

    def NameProblem(self, name: str) -> str:
        if not name:
            return "An instrument needs a name"
        is_taken = name.casefold() != self.device.name.casefold() and cupboard.has(name)
        return f"There is an instrument {name} already" if is_taken else ""

    def OnProperties(self) -> None:
        self.open_window("Properties", self, caption=self.name)

    def OnCalibrate(self) -> None:
        self.open_window("Calibration", self, key="Calibration." + self.name, caption="Calibration of " + self.name)

    def OnMeasure(self) -> None:
        self.open_window("Measure", self, caption="Measure with " + self.name)

    def OnRemove(self) -> None:
        if corvane.ask(f"Remove the instrument {self.name}?", ["Remove"]) is None:
            return
        cupboard.devices.remove(self.device)
        cupboard.save()
        corvane.explorer().DeleteFromExplorer(self)

    @corvane.job("Measure with {self.name}")
    async def measure(self, title: str, count: int, interval: float, progress: corvane.Progress) -> None:
        """Two of these may run at the same time, and everything else goes on."""
        values: List[str] = []
        for done in range(count):
            progress.set_part(done, count)
            progress.set_text(f"{done} of {count} readings")
            values.append(f"{self.device.read():.5g}")
            await asyncio.sleep(interval)
        cupboard.save()
        measurements = corvane.find_service("Measurements")
        if measurements is None:
            raise corvane.Failure("The service Measurements is missing, so the readings can't be kept")
        name = measurements.AddSeries(title, self.device.unit, interval, "\n".join(values))
        corvane.set_status(f"Recorded {name}: {count} readings")


class Cabinet(corvane.Item):
    def OnInitialize(self) -> None:
        for device in cupboard.devices:
            self.add_child(Instrument(device))


class PropertiesPage(corvane.Page):
    Kind: str = ""
    Note: str = ""
    Calibration: str = ""
    Reading: str = ""

    @property
    def KindChoices(self) -> str:
        return "\n".join(KINDS)

    def OnInitialize(self) -> None:
        device = self.about.device
        self.Kind, self.Note = device.kind, device.note
        self.Calibration = f"{device.slope:.4g} · reading {device.offset:+.4g} {device.unit}"

    def Read(self) -> None:
        device = self.about.device
        self.Reading = f"{device.read():.5g} {device.unit}"

    def OnSave(self) -> None:
        device = self.about.device
        device.kind, device.note = self.Kind, self.Note
        cupboard.save()


class MeasurePage(corvane.Page):
    Title: str = ""
    Count: int = 60
    Interval: float = 0.5

    def OnInitialize(self) -> None:
        self.Title = self.about.name
        self.Count = 60
        self.Interval = 0.5

    @property
    def Takes(self) -> str:
        return f"{self.Count * self.Interval:.0f} s"

    def OnCommand(self, command: int) -> None:
        """Not OnSave, which comes only when something has been changed."""
        if command == OK:
            self.about.measure(self.Title, self.Count, self.Interval)


class CalibrationPage(corvane.Page):
    Reference: Optional[float] = None
    Points: Optional[corvane.Rows] = None
    Result: str = ""

    def OnInitialize(self) -> None:
        self._points: List[Tuple[float, float]] = []
        self.show_points()

    def show_points(self) -> None:
        self.Points = corvane.Rows.of(["Reference", "Reading"], self._points)
        try:
            line = self.line()
        except ValueError as error:
            self.Result = str(error)
        else:
            self.Result = f"{line.slope:.5g} · reading {line.offset:+.5g}, residual {line.residual:.2g}"

    def line(self) -> Line:
        return fit([reading for _, reading in self._points], [reference for reference, _ in self._points])

    def Take(self) -> None:
        """Reads the instrument while it measures something of a known value."""
        if self.Reference is None:
            raise corvane.Failure("Enter the known value first")
        self._points.append((self.Reference, round(self.about.device.read_raw(self.Reference), 5)))
        self.show_points()
        self.validity_changed()

    def OnValidate(self) -> bool:
        return len(self._points) >= 2

    def OnSave(self) -> None:
        line = self.line()
        self.about.device.slope, self.about.device.offset = line.slope, line.offset
        cupboard.save()
        corvane.set_status(f"Calibrated {self.about.name}")


class Instruments(corvane.Service):
    def Start(self) -> None:
        corvane.explorer().Populate()

    def OnAdd(self) -> None:
        name = (corvane.ask_text("Name of the instrument", title="Add Instrument") or "").strip()
        if not name:
            return
        if cupboard.has(name):
            raise corvane.Failure(f"There is an instrument {name} already")
        device = Device(name)
        cupboard.devices.append(device)
        cupboard.save()
        item = Instrument(device)
        corvane.explorer().AddToExplorer(item, "Instrument", None)
        item.OnProperties()


corvane.run()
