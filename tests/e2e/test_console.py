"""What the program writes to its console."""

import tempfile
import unittest

from driver import Page, Vantreo, click, press_key, wait_for
from samples import SUBTITLES, make_movie
from window_case import WindowCase


class Console(WindowCase):
    def test_normal_use_writes_nothing_to_the_console(self) -> None:
        movie = make_movie(self.movies / "movie.mkv", 3)
        movie.with_suffix(".srt").write_text(SUBTITLES)
        with tempfile.TemporaryFile() as console:
            window = self.enterContext(Vantreo(console=console))
            window.drop([movie], window.movie_list)
            window.convert()
            window.open_page(Page.OPTIONS)
            window.choose(window.language_box, "Deutsch")
            wait_for(lambda: window.page_titles[0] == "Konvertieren", "a German window")
            window.open_page(Page.ABOUT)
            press_key("Return")  # follows the first link
            self.wait_for_pages(1)
            window.open_page(Page.CONVERT)
            click(window.movies_button)
            window.wait_for_dialog()
            press_key("Escape")
            window.wait_for_no_dialog()
            self.close_window(window)
            console.seek(0)
            self.assertEqual(console.read().decode(), "")

    def converted(self) -> str:
        """Converts the movies in their folder, successfully or not; returns the console output."""
        with tempfile.TemporaryFile() as console:
            window = self.enterContext(Vantreo(console=console))
            window.drop(sorted(self.movies.glob("*.mkv")), window.movie_list)
            window.convert()
            self.close_window(window)
            console.seek(0)
            return console.read().decode()

    def test_a_failed_step_is_reported_on_the_console(self) -> None:
        movie = make_movie(self.movies / "movie.mkv", 1)
        movie.with_suffix(".srt").write_text("no subtitles")
        self.assertRegex(self.converted(), r"\AMP4Box: .*movie\.srt.*\n\Z")
        self.assertEqual(self.output_names(), ["movie.mp4", "movie.mp4.failed.txt"])

    def test_the_console_reports_where_the_failure_note_went(self) -> None:
        self.write_settings(Output="/proc")
        make_movie(self.movies / "movie.mkv", 1)
        where, what = self.converted().splitlines()
        self.assertRegex(
            where, r"\Affmpeg: what happened is written in '.*movie\.mp4~.*', not beside"
        )
        self.assertIn("'/proc/movie.mp4'", where)
        self.assertRegex(what, r"\Affmpeg: cannot convert .*/proc.*")


if __name__ == "__main__":
    unittest.main()
