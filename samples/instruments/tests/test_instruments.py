"""The whole application, without a display."""

import json

BATH = "node 0 Instrument.Bath"


def field(screen, name, window=0):
    fields = screen.document["windows"][window]["pages"][0]["fields"]
    return next(entry for entry in fields if entry["name"] == name)


def test_measures_beside_other_work_and_shows_the_series(laboratory):
    screen = laboratory.take(
        BATH, "click Instrument.Measure",
        "  set Measure 0 Count 40", "  set Measure 0 Interval 0.001", "  expect windows[Measure].pages[0].valid true",
        "  command Measure OK",
        "expect jobs[Measure with Bath].state done", "expect status Recorded Bath: 40 readings",
        "tab 1", "node 1 Series.Bath", "dblclick", "press Bath 0 Drift",
    )
    assert field(screen, "Summary")["value"].startswith("40 readings, mean 2")
    assert field(screen, "Plot")["value"] == "SVG picture"
    assert len(field(screen, "Readings")["rows"]) == 40
    assert "p = " in field(screen, "Trend")["value"]
    assert [job["state"] for job in screen.document["jobs"]] == ["done", "done"]
    assert screen.log == []


def test_measuring_that_is_cancelled_keeps_nothing(laboratory):
    screen = laboratory.take(
        BATH, "click Instrument.Measure", "  set Measure 0 Interval 0.01", "  command Measure OK",
        "cancel Measure with Bath at 30%", "expect jobs[0].state cancelled",
    )
    assert screen.document["explorer"]["tabs"][1]["nodes"][1:] == []


def test_calibration_needs_two_points_and_is_kept(laboratory, tmp_path):
    key = "Calibration.Bath"
    screen = laboratory.take(BATH, "click Instrument.Calibrate", f"press {key} 0 Take")
    assert screen.document["failure"]["description"] == "Enter the known value first"
    screen = laboratory.take(
        BATH, "click Instrument.Calibrate", f"set {key} 0 Reference 0", f"press {key} 0 Take",
        "expect windows[0].pages[0].valid false", f"set {key} 0 Reference 50", f"press {key} 0 Take",
        "expect windows[0].pages[0].valid true", f"command {key} OK", "expect status Calibrated Bath",
    )
    assert screen.log == []
    bath = json.loads((tmp_path / "instruments.json").read_text())[0]
    assert abs(bath["slope"] - 0.98) < 0.02
    shown = f"  expect windows[0].pages[0].fields[Calibration].value {bath['slope']:.4g} · reading {bath['offset']:+.4g} °C"
    assert laboratory.take(BATH, "click Instrument.Properties", shown).log == []


def test_adds_renames_and_removes_instruments(laboratory):
    screen = laboratory.take("answer Probe", "click Instrument.Add", "answer bath", "click Instrument.Add")
    assert [entry["description"] for entry in screen.log] == ["There is an instrument bath already"] * len(screen.log)
    screen = laboratory.take("node 0 Instrument.Probe", "rename Probe B", "answer Remove", "click Instrument.Remove")
    keys = [node["key"] for node in screen.document["explorer"]["tabs"][0]["nodes"]]
    assert keys == ["Cabinet", "Instrument.Bath", "Instrument.Scales"]


def test_wrong_import_names_file_and_line(laboratory, tmp_path):
    wrong = tmp_path / "wrong.csv"
    wrong.write_text("Time,Value\n0,1\nx,2\n")
    screen = laboratory.take(f"answer {wrong}", "click Series.Import")
    assert "wrong.csv can't be imported: Line 3" in screen.log[0]["description"]
