"""Movies are added and removed; the output folder is selected and saved."""

import time
import unittest
from pathlib import Path

from driver import BUILD, Atspi, Vantreo, click, descendants, holding, press_key, wait_for
from samples import make_movie
from texts import text
from window_case import SETTINGS, WindowCase

USER_DIRS = SETTINGS.with_name("user-dirs.dirs")


class Selection(WindowCase):
    def make_files(self, *names: str) -> list[Path]:
        """Any files work: they are read only when a run starts."""
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


class Dialogs(WindowCase):
    """Where the dialogs open, and what they show."""

    def setUp(self) -> None:
        super().setUp()
        self.videos = self.movies / "Vidéos"
        self.videos.mkdir()
        for name in "first.avi", "second.avi", "no dot":
            (self.videos / name).touch()
        self.addCleanup(USER_DIRS.unlink, missing_ok=True)
        USER_DIRS.write_text(f'XDG_VIDEOS_DIR="{self.videos}"\n')

    def open_movie_dialog(self, window: Vantreo) -> None:
        click(window.movies_button)
        window.wait_for_dialog()

    def test_several_movies_are_chosen_at_once(self) -> None:
        window = self.open_window()
        self.open_movie_dialog(window)
        first, _, last = window.wait_for_files(["first.avi", "second.avi", "no dot"])
        click(first)
        with holding("ctrl"):
            click(last)
        click(window.dialog_button("Open"))
        window.wait_for_no_dialog()

        chosen = sorted(str(self.videos / name) for name in ("first.avi", "no dot"))
        wait_for(lambda: sorted(window.movies) == chosen, "both movies")

    def test_the_movie_dialog_opens_in_the_folder_used_last(self) -> None:
        other = self.movies / "other"
        other.mkdir()
        for name in "third.avi", "fourth.avi":
            (other / name).touch()
        window = self.open_window()
        self.open_movie_dialog(window)
        window.wait_for_files(["first.avi"])
        window.enter_path(other / "third.avi")
        wait_for(lambda: window.movies == [str(other / "third.avi")], "the chosen movie")
        window.wait_for_active()

        self.open_movie_dialog(window)
        window.wait_for_files(["third.avi", "fourth.avi"])
        window.leave_dialog()

        for movie in other.iterdir():
            movie.unlink()
        other.rmdir()
        self.open_movie_dialog(window)
        window.wait_for_files(["first.avi", "second.avi", "no dot"])
        window.leave_dialog()

    def test_the_movie_dialog_opens_in_the_home_folder_without_a_videos_folder(self) -> None:
        USER_DIRS.unlink()
        movie = Path.home() / "at home.avi"
        self.addCleanup(movie.unlink)
        movie.touch()
        window = self.open_window()
        self.open_movie_dialog(window)
        window.wait_for_files([movie.name])

    def test_the_folder_dialog_opens_at_the_saved_folder(self) -> None:
        (self.output / "inside").mkdir()
        window = self.open_window()
        click(window.output_button)
        window.wait_for_files(["inside"])
        window.leave_dialog()
        self.assertEqual(window.output_folder, str(self.output))

    def test_the_folder_dialog_opens_above_a_folder_that_is_gone(self) -> None:
        self.write_settings(Output=str(self.movies / "gone" / "further"))
        window = self.open_window()
        click(window.output_button)
        window.wait_for_files([self.videos.name])

    def test_the_folder_dialog_never_opens_in_the_programs_folder(self) -> None:
        beside = Path.home() / "beside"
        beside.mkdir()
        self.addCleanup(beside.rmdir)
        for folder in "Vantreo.app", ".", "~":
            with self.subTest(folder):
                self.write_settings(Output=folder)
                window = self.open_window()
                click(window.output_button)
                window.wait_for_files([beside.name])
                window.leave_dialog()
                self.close_window(window)

    def test_the_file_dialog_does_not_list_the_programs_folder(self) -> None:
        window = self.open_window()
        for button in window.movies_button, window.output_button:
            click(button)
            dialog = window.wait_for_dialog()
            labels = (c for c in descendants(dialog) if c.get_role() == Atspi.Role.LABEL)
            places = [label.get_name() for label in labels]
            self.assertIn("Other Locations", places)
            self.assertNotIn(BUILD.name, places)
            window.leave_dialog()

    def test_a_relative_output_folder_is_not_looked_up_in_the_programs(self) -> None:
        movie = make_movie(self.movies / "movie.mkv", 1)
        window = self.open_window()
        window.drop([movie], window.movie_list)
        for folder in "Vantreo.app", "bin", ".", "~":
            with self.subTest(folder):
                window.type_output_folder(Path(folder))
                window.press_convert()
                self.assertIn(text("error_badOutput"), window.answer("OK"))
                self.assertEqual(window.movies, [str(movie)])
                self.assertEqual(window.output_folder, folder)


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
