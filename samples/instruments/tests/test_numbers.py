"""What needs no application: these modules know nothing of one."""

import pytest

from devices import Cupboard, Device, fit
from series import Series, Shelf


def test_calibration_finds_the_line_and_what_is_left():
    line = fit([0, 10, 20], [1, 21, 41])
    assert (line.slope, line.offset, line.residual) == (2, 1, 0)
    with pytest.raises(ValueError, match="different readings"):
        fit([5, 5], [1, 2])


def test_calibrated_device_reads_true():
    device = Device("Scales", "Balance")
    line = fit([device.read_raw(value) for value in range(0, 100, 5)], list(range(0, 100, 5)))
    device.slope, device.offset = line.slope, line.offset
    assert device.slope * device.read_raw(50) + device.offset == pytest.approx(50, abs=0.02)


def test_series_survive_their_file(tmp_path):
    series = Series("Bath", "°C", [(0.0, 21.5), (0.5, 21.75)], 'with "quotes", and a comma')
    shelf = Shelf(tmp_path)
    shelf.write(series)
    assert shelf.read("Bath") == series
    assert shelf.free_name("bath") == "bath 2"
    assert "/" not in shelf.free_name("../a:b")


@pytest.mark.parametrize(
    "text, why",
    [("", "no titles"), ("t,v\n1,2\n3\n", "Line 3"), ("t,v\n1,x\n", "Line 2"), ("t,v\n1,inf\n", "finite")],
)
def test_wrong_files_say_where(text, why):
    with pytest.raises(ValueError, match=why):
        Series.from_text("x", text)


def test_drift_is_told_from_noise():
    rising = Series("a", "g", [(float(t), t * 0.5 + (t % 3)) for t in range(30)])
    level = Series("b", "g", [(float(t), float((t * 7) % 5)) for t in range(30)])
    assert rising.drift(200, lambda done: None)[1] < 0.01
    assert level.drift(200, lambda done: None)[1] > 0.05


def test_cupboard_keeps_what_was_saved(tmp_path):
    cupboard = Cupboard(tmp_path)
    cupboard.devices[0].note = "Left bench"
    cupboard.save()
    assert Cupboard(tmp_path).devices[0].note == "Left bench"
    assert not list(tmp_path.glob("*.new"))
