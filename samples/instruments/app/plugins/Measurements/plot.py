"""A plot of a series: by matplotlib where it is installed, else by a few lines of SVG."""

from typing import List, Tuple

import corvane
from series import Series

WIDTH, HEIGHT, MARGIN = 560, 280, 48


def plot(series: Series) -> str:
    """The value of a field that shows a picture."""
    if not series.readings:
        return ""
    try:
        from matplotlib.figure import Figure  # type: ignore[import]
    except ImportError:
        return corvane.picture(drawn(series))
    figure = Figure(figsize=(5.6, 2.8), layout="constrained")
    axes = figure.subplots()
    axes.plot(*zip(*series.readings), marker=".", linewidth=1)
    axes.set_xlabel("Time (s)")
    axes.set_ylabel(series.unit)
    axes.grid(alpha=0.3)
    return corvane.picture(figure)


def ticks(least: float, most: float) -> List[float]:
    return [least + (most - least) * part / 4 for part in range(5)]


def drawn(series: Series) -> str:
    times, values = zip(*series.readings)
    pad = (max(values) - min(values)) * 0.08 or 1.0
    left, right = min(times), max(times) or 1.0
    low, high = min(values) - pad, max(values) + pad

    def place(time: float, value: float) -> Tuple[float, float]:
        x = MARGIN + (time - left) / ((right - left) or 1.0) * (WIDTH - MARGIN - 16)
        return round(x, 1), round(HEIGHT - 34 - (value - low) / (high - low) * (HEIGHT - 50), 1)

    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" font-family="sans-serif" font-size="11">']
    parts.append(f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>')
    for value in ticks(low, high):
        _, y = place(left, value)
        parts.append(f'<path d="M{MARGIN} {y}H{WIDTH - 16}" stroke="#d8d8d8"/>')
        parts.append(f'<text x="{MARGIN - 6}" y="{y + 4}" text-anchor="end" fill="#333333">{value:.4g}</text>')
    for time in ticks(left, right):
        x, _ = place(time, low)
        parts.append(f'<text x="{x}" y="{HEIGHT - 18}" text-anchor="middle" fill="#333333">{time:.3g}</text>')
    parts.append(f'<text x="{WIDTH / 2}" y="{HEIGHT - 4}" text-anchor="middle" fill="#333333">Time (s)</text>')
    points = " ".join("{},{}".format(*place(time, value)) for time, value in series.readings)
    parts.append(f'<polyline points="{points}" fill="none" stroke="#1f77b4" stroke-width="1.5"/>')
    parts += ['<circle cx="{}" cy="{}" r="2" fill="#1f77b4"/>'.format(*place(t, v)) for t, v in series.readings[:500]]
    return "".join(parts) + "</svg>"
