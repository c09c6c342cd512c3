"""Moments in exact rational arithmetic, for the table in DescriptivesTest.cpp.

Prints a row for each data set: mean, variance, standard deviation, skewness and kurtosis by the
formulas of docs/descriptives.md, rounded to a double at the end only. "none" is a statistic that is
absent or beyond the range of a double.

    python3 tests/engine/exact_moments.py
"""
from fractions import Fraction
from math import isqrt


def root(x):
    """The square root with 60 digits or more, as a fraction."""
    scale = 1
    while x * scale < 10**120:
        scale *= 10**20
    return Fraction(isqrt(int(x * scale * scale)), scale)


def text(x):
    try:
        return "none" if x is None else repr(float(x))
    except OverflowError:
        return "none"


def moments(values, weights=None):
    pairs = [(Fraction(x), Fraction(w)) for x, w in zip(values, weights or [1] * len(values))]
    w = sum(p[1] for p in pairs)
    mean = sum(x * v for x, v in pairs) / w
    m2, m3, m4 = (sum(v * (x - mean) ** k for x, v in pairs) for k in (2, 3, 4))
    variance = m2 / (w - 1) if w > 1 else None
    deviation = root(variance) if variance else variance
    skewness = kurtosis = None
    if variance and w >= 3:
        skewness = w * m3 / ((w - 1) * (w - 2) * deviation**3)
    if variance and w >= 4:
        kurtosis = (w * (w + 1) * m4 - 3 * (w - 1) * m2**2) / (
            (w - 1) * (w - 2) * (w - 3) * variance**2)
    return [text(x) for x in (mean, variance, deviation, skewness, kurtosis)]


def fractional(i):
    return (i % 7 + 1) / 10


SETS = {
    "large": ([1e15 + 1 + i % 3 for i in range(1000)],),
    "skewed": ([1e14 + ((i * i % 997) ** 2 // 64) / 16 for i in range(1000)],),
    "rising": ([1e9 + i * i / 8 for i in range(5000)],),
    "outlier": ([-1e15 if i == 0 else i % 10 / 4 for i in range(2000)],),
    "integers": ([2**53 + 1 + i % 3 * (i % 5) for i in range(100)],),
    "wide integers": ([(-1 if i < 3 else 1) * (2**63 - 1 - i) for i in range(10)],),
    "weighted": ([1e6 + i % 11 / 8 for i in range(1500)], [fractional(i) for i in range(1500)]),
    "constant": ([0.1] * 30, [fractional(i) for i in range(30)]),
    "huge": ([1.7e308, -1.7e308, 1.5e308, 1e307],),
    "balanced": ([1.5, -1.5, 2.5, -2.5],),
    "tiny": ([1e-200, 2e-200, 4e-200, 5e-200],),
}

if __name__ == "__main__":
    for name, data in SETS.items():
        print(name, *moments(*data))
