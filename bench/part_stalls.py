"""The longest time for which the window answers nobody, at each of the things that it does."""

from driver import Page, Vantreo
from figures import Figure
from ground import (
    Scale, drop_all, folder, make_films, names, press, say, wait_for_completion, window,
    window_with_stand_ins,
)  # fmt: skip
from heartbeat import Heartbeat

LONGEST_STALL = 100  # ms
FILM_SECONDS = 10
LANGUAGES = ("Deutsch", "русский язык", "Français", "English")


def change_languages(opened: Vantreo) -> None:
    opened.open_page(Page.OPTIONS)
    for language in LANGUAGES:
        opened.choose(opened.language_box, language)
    opened.open_page(Page.CONVERT)


def run(opened: Vantreo) -> None:
    press(opened.convert_button)
    wait_for_completion(opened)


def measure(scale: Scale) -> list[Figure]:
    figures = []

    def note(name: str, heartbeat: Heartbeat) -> None:
        stall = 1000 * heartbeat.longest_stall()
        figures.append(Figure("stalls", name, stall, "ms", LONGEST_STALL))

    with folder() as work:
        films = make_films(work, 1, FILM_SECONDS)
        output = work / "made"
        output.mkdir()
        say("a conversion and four changes of the language")
        with window(output) as opened, Heartbeat(opened.pid) as heartbeat:
            drop_all(opened, films)
            heartbeat.longest_stall()
            run(opened)
            note("a conversion", heartbeat)
            change_languages(opened)
            note("a change of the language", heartbeat)
        say(f"a drop of {scale.dropped} films")
        with window_with_stand_ins() as (opened, _), Heartbeat(opened.pid) as heartbeat:
            drop_all(opened, names(scale.dropped))
            note(f"a drop of {scale.dropped} films", heartbeat)
        count = scale.run_lengths[-1]
        say(f"a run of {count} films with stand-ins for the tools")
        with window_with_stand_ins() as (opened, _), Heartbeat(opened.pid) as heartbeat:
            drop_all(opened, names(count))
            heartbeat.longest_stall()
            run(opened)
            note(f"a run of {count} films", heartbeat)
    return figures
