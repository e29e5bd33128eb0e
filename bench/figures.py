"""Pairs of measurements, and the figures computed from them.

Only arithmetic: nothing is measured here.
"""

import math
from collections.abc import Callable, Sequence
from dataclasses import asdict, dataclass, field
from statistics import median
from typing import Any


@dataclass
class Figure:
    """One measured value and its limit."""

    part: str
    name: str
    value: float
    unit: str  # "ratio", or the unit of the value
    limit: float | None = None  # the largest acceptable value; None: informational
    samples: dict[str, list[float]] = field(default_factory=dict)  # the measured values
    note: str = ""

    @property
    def is_met(self) -> bool | None:
        return None if self.limit is None else self.value <= self.limit

    def to_json(self) -> dict[str, Any]:
        return asdict(self) | {"is_met": self.is_met}


def ratio_figure(
    part: str,
    name: str,
    ours: Sequence[float],
    reference: Sequence[float],
    limit: float | None,
    note: str = "",
) -> Figure:
    """The median of the ratios of the pairs: what slows down both of a pair cancels out."""
    ratios = [one / other for one, other in zip(ours, reference, strict=True)]
    samples = {"ours": list(ours), "reference": list(reference), "ratios": ratios}
    return Figure(part, name, median(ratios), "ratio", limit, samples, note)


def in_turns(
    count: int, legs: dict[str, Callable[[], dict[str, float]]]
) -> dict[str, dict[str, list[float]]]:
    """Runs the legs as A B A B ..., `count` times each; returns the values by leg and name."""
    results: dict[str, dict[str, list[float]]] = {leg: {} for leg in legs}
    for _ in range(count):
        for leg, run in legs.items():
            for name, value in run().items():
                results[leg].setdefault(name, []).append(value)
    return results


def slope(points: Sequence[tuple[float, float]]) -> float:
    """The slope of the least-squares line through the points."""
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    spread = sum((x - mean_x) ** 2 for x, _ in points)
    return sum((x - mean_x) * (y - mean_y) for x, y in points) / spread


def growth_exponent(points: Sequence[tuple[float, float]]) -> float:
    """The exponent of growth of y with x: 1 for a proportion, 2 for a square."""
    return slope([(math.log(x), math.log(y)) for x, y in points])


def n_log_n_excess(points: Sequence[tuple[float, float]]) -> float:
    """The growth of the cost from the first point to the last, divided by that of n log n."""
    (first_n, first), (last_n, last) = points[0], points[-1]
    return (last / first) / (last_n * math.log(last_n) / (first_n * math.log(first_n)))
