"""Pearson's correlation of each pair of numeric columns, with its p where scipy is installed."""

from itertools import combinations
from statistics import fmean

try:
    from scipy.stats import pearsonr
except ImportError:
    pearsonr = None


def correlation(x, y):
    mean_x, mean_y = fmean(x), fmean(y)
    products = sum((a - mean_x) * (b - mean_y) for a, b in zip(x, y))
    return products / (sum((a - mean_x) ** 2 for a in x) * sum((b - mean_y) ** 2 for b in y)) ** 0.5


def analyse(data):
    for first, second in combinations(data.numeric, 2):
        x, y = data.numbers(first, second)
        name = f"{first}, {second} (n = {len(x)})"
        if len(set(x)) < 2 or len(set(y)) < 2:
            yield name, "one value only"
        elif pearsonr:
            found = pearsonr(x, y)
            yield name, f"r = {found[0]:.3f}, p = {found[1]:.2g}"
        else:
            yield name, f"r = {correlation(x, y):.3f}"
