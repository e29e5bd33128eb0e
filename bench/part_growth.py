"""The cost of a movie in a long list, and of the list itself, with stand-ins for the tools."""

from pathlib import Path
from statistics import median

from driver import Vantreo, click, press_key, wait_for
from figures import Figure, n_log_n_excess
from ground import (
    Scale,
    drop_all,
    names,
    press,
    say,
    wait_for_completion,
    wait_quietly,
    window_with_stand_ins,
)  # fmt: skip
from readings import main_thread_seconds

# More would not count as flat.
LARGEST_GROWTH = 1.1
# With fewer movies, the start and end of a run dominate.
SHORTEST_FLAT_RUN = 10
DELETED = 20


def cost_of_a_movie(count: int) -> dict[str, float]:
    """Wall time, and processor time of the GUI thread, of a run, per movie."""
    with window_with_stand_ins() as (opened, log):
        drop_all(opened, names(count))
        before = main_thread_seconds(opened.pid)
        pressed = press(opened.convert_button)
        wait_quietly(lambda: starts(log) >= 2 * count, 300, 0.02)
        used = main_thread_seconds(opened.pid) - before
        ended = wait_for_completion(opened)
        return {"wall": 1000 * (ended - pressed) / count, "gui": 1000 * used / count}


def starts(log: Path) -> int:
    """The number of started tools: a probe and a transcode for each movie."""
    return log.read_bytes().count(b"\n") if log.exists() else 0


def seconds_of_list(count: int) -> dict[str, float]:
    """Processor time of the GUI thread to add `count` movies to the list, and to delete as many."""
    with window_with_stand_ins() as (opened, _):
        before = main_thread_seconds(opened.pid)
        drop_all(opened, names(count))
        dropped = main_thread_seconds(opened.pid)
        click(opened.movie_list)
        selected = main_thread_seconds(opened.pid)
        delete_some(opened, count)
        deleted = (main_thread_seconds(opened.pid) - selected) / DELETED
    return {"drop": dropped - before, "delete": deleted * count}


def delete_some(opened: Vantreo, count: int) -> None:
    for left in range(count - 1, count - 1 - DELETED, -1):
        press_key("Home")
        press_key("space")
        press_key("Delete")
        wait_for(lambda: opened.movie_count == left, "one movie less")


def growth(name: str, points: dict[int, list[float]]) -> Figure:
    """The cost of a movie in the longest run, relative to a short one."""
    flat = [count for count in points if count >= SHORTEST_FLAT_RUN]
    value = median(points[flat[-1]]) / median(points[flat[0]])
    samples = {str(count): costs for count, costs in points.items()}
    return Figure("growth", name, value, "ratio", LARGEST_GROWTH, samples,
                  f"{flat[-1]} movies relative to {flat[0]}")  # fmt: skip


def list_growth(name: str, points: dict[int, list[float]]) -> Figure:
    excess = n_log_n_excess([(count, median(costs)) for count, costs in points.items()])
    samples = {str(count): costs for count, costs in points.items()}
    return Figure("growth", name, excess, "times n log n", LARGEST_GROWTH, samples)


def collected(measured: list[tuple[int, dict[str, float]]]) -> dict[str, dict[int, list[float]]]:
    points: dict[str, dict[int, list[float]]] = {}
    for count, costs in measured:
        for name, cost in costs.items():
            points.setdefault(name, {}).setdefault(count, []).append(cost)
    return points


def measure(scale: Scale) -> list[Figure]:
    say(f"{scale.run_repeats} times: runs of {scale.run_lengths} movies")
    runs = collected(
        [(n, cost_of_a_movie(n)) for _ in range(scale.run_repeats) for n in scale.run_lengths]
    )
    say(f"{scale.run_repeats} times: lists of {scale.list_lengths} movies")
    lists = collected(
        [(n, seconds_of_list(n)) for _ in range(scale.run_repeats) for n in scale.list_lengths]
    )
    return [
        growth("wall time per movie", runs["wall"]),
        growth("the window's processor time per movie", runs["gui"]),
        list_growth("dropping movies on the list", lists["drop"]),
        list_growth("deleting movies from the list", lists["delete"]),
    ]
