"""The service Measurements: what the explorer's tab Measurements shows, and the window of a series."""

from pathlib import Path
from typing import Optional

import corvane
from plot import plot
from series import Series, Shelf, shelf_folder

shelf = Shelf(shelf_folder())
ROUNDS = 2000


class SeriesItem(corvane.Item):
    def OnOpen(self) -> None:
        self.open_window("SeriesWindow", self, key=self.name, caption=self.name)

    def OnExport(self) -> None:
        path = corvane.ask_save_file("Export Series", "Comma-separated values (*.csv)|*.csv", self.name + ".csv")
        if path is not None:
            Path(path).write_text(shelf.read(self.name).to_text(), "utf-8")
            corvane.set_status(f"Wrote {path}")

    def OnDelete(self) -> None:
        if corvane.ask(f"Delete the series {self.name}?", ["Delete"]) is None:
            return
        shelf.file(self.name).unlink()
        corvane.explorer().DeleteFromExplorer(self)


class Notebook(corvane.Item):
    def OnInitialize(self) -> None:
        for name in shelf.names():
            self.add_child(SeriesItem(name))


class SeriesPage(corvane.Page):
    Note: str = ""
    Summary: str = ""
    Plot: str = ""
    Trend: str = ""
    Readings: Optional[corvane.Rows] = None

    def OnInitialize(self) -> None:
        self._series = shelf.read(self.about.name)
        self.Note, self.Summary = self._series.note, self._series.summary()
        self.Plot = plot(self._series)
        self.Trend = "Not looked at yet"
        self.Readings = corvane.Rows.of(["Time", "Value"], self._series.readings)

    def Drift(self) -> None:
        self.estimate_drift()

    @corvane.job("Drift of {self.about.name}")
    def estimate_drift(self, progress: corvane.Progress) -> None:
        """In a thread of its own: it computes for a while."""

        def report(done: int) -> None:
            progress.set_part(done, ROUNDS)
            progress.stop_if_cancelled()

        slope, chance = self._series.drift(ROUNDS, report)
        self.Trend = f"{slope * 60:+.3g} {self._series.unit}/min, p = {chance:.2g}"
        if self.window is not None:  # it may have been closed meanwhile
            self.form.refresh("Trend")

    def OnSave(self) -> None:
        self._series.note = self.Note.strip()
        shelf.write(self._series)


class Measurements(corvane.Service):
    def AddSeries(self, title: str, unit: str, interval: float, values: str) -> str:
        """Called by other services: a value on each line. Returns the name under which the series is kept."""
        readings = [(place * interval, float(value)) for place, value in enumerate(values.splitlines())]
        return self.add(Series(shelf.free_name(title), unit, readings))

    def add(self, series: Series) -> str:
        shelf.write(series)
        corvane.explorer().AddToExplorer(SeriesItem(series.name), "Series", None)
        return series.name

    def OnImport(self) -> None:
        path = corvane.ask_open_file("Import Series", "Comma-separated values (*.csv)|*.csv|All files|*")
        if path is None:
            return
        try:
            series = Series.from_text(shelf.free_name(Path(path).stem), Path(path).read_text("utf-8"))
        except (OSError, UnicodeError, ValueError) as error:
            raise corvane.Failure(f"{path} can't be imported: {error}") from error
        corvane.set_status(f"Imported {self.add(series)}")


corvane.run()
