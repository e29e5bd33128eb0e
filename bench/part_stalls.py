"""The longest time for which the window does not answer, in each of its operations."""

from statistics import median

from driver import Page, Vantreo
from figures import Figure, in_turns
from ground import (
    Scale,
    drop_all,
    folder,
    make_movies,
    names,
    press,
    say,
    wait_for_completion,
    window,
    window_with_stand_ins,
)  # fmt: skip
from heartbeat import Heartbeat

LONGEST_STALL = 100  # ms
MOVIE_SECONDS = 10
LANGUAGES = ("Deutsch", "русский язык", "Français", "English")


def change_languages(opened: Vantreo) -> None:
    opened.open_page(Page.OPTIONS)
    for language in LANGUAGES:
        opened.choose(opened.language_box, language)
    opened.open_page(Page.CONVERT)


def run(opened: Vantreo) -> None:
    press(opened.convert_button)
    wait_for_completion(opened)


def stalls_of_a_conversion(movie_seconds: int) -> dict[str, float]:
    with folder() as work:
        movies = make_movies(work, 1, movie_seconds)
        output = work / "made"
        output.mkdir()
        with window(output) as opened, Heartbeat(opened.pid) as heartbeat:
            drop_all(opened, movies)
            heartbeat.longest_stall()
            run(opened)
            converting = heartbeat.longest_stall()
            change_languages(opened)
            return {"a conversion": converting,
                    "changes of the language": heartbeat.longest_stall()}  # fmt: skip


def stall_of_a_drop(count: int) -> dict[str, float]:
    with window_with_stand_ins() as (opened, _), Heartbeat(opened.pid) as heartbeat:
        drop_all(opened, names(count))
        return {f"a drop of {count} movies": heartbeat.longest_stall()}


def stall_of_a_run(count: int) -> dict[str, float]:
    with window_with_stand_ins() as (opened, _), Heartbeat(opened.pid) as heartbeat:
        drop_all(opened, names(count))
        heartbeat.longest_stall()
        run(opened)
        return {f"a run of {count} movies with stand-ins": heartbeat.longest_stall()}


def measure(scale: Scale) -> list[Figure]:
    say(f"{scale.stalls} times: a conversion, the languages, a drop, a long run")
    legs = {
        "conversion": lambda: stalls_of_a_conversion(MOVIE_SECONDS),
        "drop": lambda: stall_of_a_drop(scale.dropped),
        "run": lambda: stall_of_a_run(scale.run_lengths[-1]),
    }
    figures = []
    for results in in_turns(scale.stalls, legs).values():
        for name, stalls in results.items():
            millis = [1000 * seconds for seconds in stalls]
            note = f"{min(millis):.0f} to {max(millis):.0f} ms"
            figures.append(
                Figure("stalls", name, median(millis), "ms", LONGEST_STALL, {"ms": millis}, note)
            )
    return figures
