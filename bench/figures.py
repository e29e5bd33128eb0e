"""Pairs of measurements, and the figures that they make.

Everything here is arithmetic: nothing is measured.
"""

import math
from collections.abc import Callable, Sequence
from dataclasses import asdict, dataclass, field
from statistics import median
from typing import Any


@dataclass
class Figure:
    """One measured number beside its mark."""

    part: str
    name: str
    value: float
    unit: str  # "ratio", or what the value is counted in
    limit: float | None = None  # the largest value that is good; None: only told
    samples: dict[str, list[float]] = field(default_factory=dict)  # what the value comes from
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
    """The median of the ratios of neighbours: what slows both of a pair down cancels out."""
    ratios = [one / other for one, other in zip(ours, reference, strict=True)]
    samples = {"ours": list(ours), "reference": list(reference), "ratios": ratios}
    return Figure(part, name, median(ratios), "ratio", limit, samples, note)


def in_turns(
    count: int, legs: dict[str, Callable[[], dict[str, float]]]
) -> dict[str, dict[str, list[float]]]:
    """Runs the legs A B A B ..., `count` times each; their numbers by leg and by name."""
    results: dict[str, dict[str, list[float]]] = {leg: {} for leg in legs}
    for _ in range(count):
        for leg, run in legs.items():
            for name, value in run().items():
                results[leg].setdefault(name, []).append(value)
    return results


def slope(points: Sequence[tuple[float, float]]) -> float:
    """The slope of the straight line that lies closest to the points (least squares)."""
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    spread = sum((x - mean_x) ** 2 for x, _ in points)
    return sum((x - mean_x) * (y - mean_y) for x, y in points) / spread


def growth_exponent(points: Sequence[tuple[float, float]]) -> float:
    """The power of x that y grows with: 1 for a straight line through nothing, 2 for a square."""
    return slope([(math.log(x), math.log(y)) for x, y in points])


def n_log_n_excess(points: Sequence[tuple[float, float]]) -> float:
    """How many times faster than n log n the cost grows from the first point to the last."""
    (first_n, first), (last_n, last) = points[0], points[-1]
    return (last / first) / (last_n * math.log(last_n) / (first_n * math.log(first_n)))
