"""Movies come into the list and out of it; the output folder is chosen and remembered."""

import time
import unittest
from pathlib import Path

from driver import click, press_key, wait_for
from window_case import WindowCase


class Selection(WindowCase):
    def make_files(self, *names: str) -> list[Path]:
        """Any files will do: they are looked into only when a run begins."""
        paths = [self.movies / name for name in names]
        for path in paths:
            path.touch()
        return paths

    def test_dropped_files_are_listed_once(self) -> None:
        first, second = self.make_files("first.avi", "second.avi")
        window = self.open_window()
        window.drop([first, second, first], window.movie_list)
        self.assertEqual(window.movies, [str(first), str(second)])

        window.drop([second], window.movie_list)
        self.assertEqual(window.movies, [str(first), str(second)])

    def test_a_file_dropped_on_the_output_field_sets_its_folder(self) -> None:
        files = self.make_files("first.avi", "second.avi")
        window = self.open_window()
        window.drop(files, window.output_field)
        self.assertEqual(window.output_folder, str(self.movies))

    def test_the_delete_key_removes_the_selected_movie(self) -> None:
        first, second, third = self.make_files("first.avi", "second.avi", "third.avi")
        window = self.open_window()
        window.drop([first, second, third], window.movie_list)
        click(window.movie_entry(1))
        press_key("Delete")

        remaining = [str(first), str(third)]
        wait_for(lambda: window.movies == remaining, "the list without the second movie")

    def test_a_double_click_on_the_list_opens_the_movie_dialog(self) -> None:
        (movie,) = self.make_files("movie.avi")
        window = self.open_window()
        click(window.movie_list, times=2)
        window.enter_path(movie)

        wait_for(lambda: window.movies == [str(movie)], "the chosen movie")

    def test_a_double_click_on_the_field_opens_the_folder_dialog(self) -> None:
        window = self.open_window()
        click(window.output_field, times=2)
        window.enter_path(self.movies)

        wait_for(lambda: window.output_folder == str(self.movies), "the chosen folder")

    def test_a_typed_output_folder_survives_a_restart(self) -> None:
        window = self.open_window()
        window.type_output_folder(self.movies)
        window.close()
        self.assertEqual(window.wait_for_end(), 0)

        self.assertEqual(self.open_window().output_folder, str(self.movies))


class ManyMovies(WindowCase):
    COUNT = 5000

    def test_five_thousand_dropped_files_are_listed_within_a_second(self) -> None:
        files = [self.movies / f"{number:04}.avi" for number in range(self.COUNT)]
        for file in files:
            file.write_bytes(b"movie")
        window = self.open_window()

        released = window.drop(files, window.movie_list)
        wait_for(lambda: window.movie_count == self.COUNT, "all of the movies")
        last = window.movie_entry(self.COUNT - 1).get_name()
        seconds = time.monotonic() - released

        self.assertEqual(last, str(files[-1]))
        self.assertLess(seconds, 1)


if __name__ == "__main__":
    unittest.main()
