"""Takes the pictures of docs/screenshots: the three pages, and a conversion under way.

    screenshots.py FOLDER

Each in three languages, on a light and a dark theme. To be run inside tests/with_display, in a
namespace whose /media is its own, so that the pictures show the same paths everywhere, and that has
no network, so that the program does not look for a newer version.
"""

import os
import sys
from pathlib import Path

from driver import Page, Vantreo, press_key, wait_for
from samples import make_movie

LANGUAGES = {"en": "English", "de": "Deutsch", "ru": "русский язык"}
THEMES = {"light": "Adwaita", "dark": "Adwaita:dark"}
MEDIA = Path("/media")
MOVIES = ("Holiday on the lake.mkv", "Grandmother's birthday.mkv", "School play.mkv")
SETTINGS = Path(os.environ["XDG_CONFIG_HOME"]) / "Vantreo.ini"


def make_movies() -> list[Path]:
    folder = MEDIA / "movies"
    folder.mkdir()
    movie = make_movie(folder / MOVIES[0], 40, size="1280x720", rate="24000/1001", grain=20)
    for name in MOVIES[1:]:
        (folder / name).hardlink_to(movie)
    return [folder / name for name in MOVIES]


def write_settings(language: str) -> None:
    settings = {
        "Output": MEDIA / "iPhone",
        "Language": language,
        "HowToMove": "false",
        "Overwrite": "false",
    }
    SETTINGS.write_text("".join(f"{key}={value}\n" for key, value in settings.items()))


def take_pictures(movies: list[Path], theme: str, prefix: str) -> None:
    def save(window: Vantreo, name: str) -> None:
        window.picture().savev(f"{prefix}-{name}.png", "png", [], [])

    with Vantreo(environment={"GTK_THEME": theme}) as window:
        window.drop(movies, window.movie_list)
        save(window, "convert")
        window.press_convert()
        wait_for(lambda: 0.3 < window.gauge < 1, "the progress bar under way", 120)
        save(window, "converting")
    with Vantreo(environment={"GTK_THEME": theme}) as window:
        window.open_next_page(Page.OPTIONS)
        save(window, "options")
        window.open_next_page(Page.ABOUT)
        press_key("shift+Tab")  # from the first link, which is marked
        save(window, "about")


def main() -> None:
    folder = Path(sys.argv[1]).absolute()
    (MEDIA / "iPhone").mkdir()
    movies = make_movies()
    for short, language in LANGUAGES.items():
        write_settings(language)
        for kind, theme in THEMES.items():
            take_pictures(movies, theme, f"{folder}/{short}-{kind}")


if __name__ == "__main__":
    main()
