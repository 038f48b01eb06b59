"""How many values of each numeric column are further than 1.5 interquartile ranges outside of the quartiles."""

from statistics import quantiles


def analyse(data):
    for column in data.numeric:
        (values,) = data.numbers(column)
        if len(values) < 4:
            yield column, "too few values"
            continue
        lower, _, upper = quantiles(values, n=4, method="inclusive")
        reach = 1.5 * (upper - lower)
        outside = [value for value in values if not lower - reach <= value <= upper + reach]
        yield column, f"{len(outside)} of {len(values)}" + (f": {', '.join(f'{v:g}' for v in sorted(outside)[:8])}" if outside else "")
