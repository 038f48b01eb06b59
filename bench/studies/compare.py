"""What numpy and pandas take for the work of StudiesBench.cpp on the same file: a line "name milliseconds" for each.

Both are of Debian: python3-numpy, python3-pandas. Each figure is the best of several runs, on one thread.
"""

import sys
import time

import numpy
import pandas


def best(runs, work):
    times = []
    for _ in range(runs):
        begin = time.perf_counter()
        work()
        times.append((time.perf_counter() - begin) * 1000)
    return min(times)


def bootstrap(values, figure, resamples=1000):
    generator = numpy.random.default_rng(1)
    figures = [figure(values[generator.integers(0, len(values), len(values))]) for _ in range(resamples)]
    return numpy.quantile(figures, [0.025, 0.975])


def main(path):
    data = pandas.read_csv(path)
    values = data["n0"].to_numpy()
    print("mean", best(1, lambda: bootstrap(values, numpy.mean)))
    print("median", best(1, lambda: bootstrap(values, numpy.median, 100)))
    numbers = data.select_dtypes("number")
    print("describe", best(3, lambda: numbers.describe()))
    print("sort-number", best(3, lambda: data.sort_values("n1", kind="stable")))
    print("sort-text", best(3, lambda: data.sort_values("label", kind="stable")))


main(sys.argv[1])
