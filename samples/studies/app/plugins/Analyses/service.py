"""Analyses in Python: each file of the folder "analyses" beside this one is one, see samples/studies/README.md."""

import importlib.util
from pathlib import Path
from types import ModuleType
from typing import Any, Dict, List, Optional

import corvane

FOLDER = Path(__file__).parent / "analyses"


class Data:
    """The data set that the window in front shows, as it is when this is made."""

    def __init__(self) -> None:
        service = corvane.find_service("Data")
        if service is None:
            raise corvane.Failure("The service Data is missing")
        self.name: str = service.DataName()
        self.columns: List[str] = service.ColumnNames().split("\n")
        self._texts: Dict[str, List[str]] = {column: service.Values(column).split("\n") for column in self.columns}

    def texts(self, column: str) -> List[str]:
        """The values of a column, "" where one is missing."""
        return self._texts[column]

    def is_numeric(self, column: str) -> bool:
        return any(self.texts(column)) and all(_number(text) is not None for text in self.texts(column) if text)

    @property
    def numeric(self) -> List[str]:
        return [column for column in self.columns if self.is_numeric(column)]

    def numbers(self, *columns: str) -> List[List[float]]:
        """Of each of the columns the values of those rows in which none of them is missing."""
        rows = [[_number(text) for text in row] for row in zip(*(self.texts(column) for column in columns))]
        whole = [row for row in rows if None not in row]
        return [[float(row[place] or 0) for row in whole] for place in range(len(columns))]


def _number(text: str) -> Optional[float]:
    try:
        return float(text)
    except ValueError:
        return None


class ResultPage(corvane.Page):
    Summary: str = ""
    Results: Optional[corvane.Rows] = None
    Plot: str = ""

    def OnInitialize(self) -> None:
        result = self.about
        self.Summary = f"{result.title}, {result.data}"
        self.Results = corvane.Rows.of(["Name", "Value"], result.rows)
        self.Plot = result.plot


class Result:
    def __init__(self, title: str, data: str, rows: List[List[str]], plot: str) -> None:
        self.title, self.data, self.rows, self.plot = title, data, rows, plot


def _load(file: Path) -> ModuleType:
    spec = importlib.util.spec_from_file_location("analysis_" + file.stem, file)
    assert spec is not None and spec.loader is not None
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def _shown(value: Any) -> str:
    return f"{value:.4g}" if isinstance(value, float) else str(value)


class Analyses(corvane.Service):
    def OnAnalyse(self) -> None:
        """The files are read each time, so that one can be written while the application runs."""
        files = {file.stem.replace("_", " ").capitalize(): file for file in sorted(FOLDER.glob("*.py"))}
        data = Data()
        title = corvane.ask(f"Which analysis of {data.name}?", list(files), "Analyses in Python")
        if title is not None:
            self.analyse(title, files[title], data)

    @corvane.job("{title}")
    async def analyse(self, title: str, file: Path, data: Data, progress: corvane.Progress) -> None:
        module = _load(file)
        rows: List[List[str]] = []
        for name, value in module.analyse(data):
            progress.stop_if_cancelled()
            progress.set_text(name)
            rows.append([name, _shown(value)])
        plot = corvane.picture(module.plot(data)) if hasattr(module, "plot") else ""
        result = Result(title, data.name, rows, plot)
        corvane.open_window("PythonAnalysis", result, owner=self, caption=f"{title} - {data.name}")


corvane.run()
