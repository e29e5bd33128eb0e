"""Home and settings folders with non-ASCII names, in any locale."""

import tempfile
import unittest
from pathlib import Path

from driver import click, wait_for
from window_case import WindowCase, make_locales

# Values of LANG; the languages are Latvian (in an encoding that is not UTF-8), one that is not
# installed, and Turkish, whose small "I" is not "i".
SYSTEMS = ["C.UTF-8", "C", "POSIX", "", "lv_LV.ISO-8859-13", "pt_BR.UTF-8", "tr_TR.UTF-8"]


class Home(WindowCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.locales = make_locales(cls, ("lv_LV", "ISO-8859-13"), ("tr_TR", "UTF-8"))

    def make_home(self) -> Path:
        home = Path(tempfile.mkdtemp(prefix="Été Żółw дом ", dir=self.movies))
        (home / ".config").mkdir()
        (home / "Vidéos").mkdir()
        (home / "Vidéos" / "été.avi").touch()
        (home / "Dokumenty ł").mkdir()
        (home / ".config" / "user-dirs.dirs").write_text(
            'XDG_DOCUMENTS_DIR="$HOME/Dokumenty ł"\nXDG_VIDEOS_DIR="$HOME/Vidéos"\n'
        )
        return home

    def test_settings_and_folders_are_found(self) -> None:
        for system in SYSTEMS:
            with self.subTest(system):
                home = self.make_home()
                window = self.open_window(
                    HOME=str(home), XDG_CONFIG_HOME="", LANG=system, LOCPATH=str(self.locales)
                )
                documents = str(home / "Dokumenty ł")
                self.assertEqual(window.output_folder, documents)
                settings = (home / ".config" / "Vantreo.ini").read_text("utf-8")
                self.assertIn(f"Output={documents}\n", settings)
                click(window.movies_button)
                (entry,) = window.wait_for_files(["été.avi"])
                click(entry, times=2)
                chosen = [str(home / "Vidéos" / "été.avi")]
                wait_for(lambda: window.movies == chosen, "the chosen movie")
                self.close_window(window)

    def test_the_folder_of_the_settings_is_found(self) -> None:
        for system in SYSTEMS:
            with self.subTest(system):
                folder = Path(tempfile.mkdtemp(prefix="réglages ж ", dir=self.movies))
                window = self.open_window(
                    XDG_CONFIG_HOME=str(folder), LANG=system, LOCPATH=str(self.locales)
                )
                window.type_output_folder(self.output)
                settings = (folder / "Vantreo.ini").read_text("utf-8")
                self.assertIn(f"Output={self.output}\n", settings)
                self.close_window(window)

    def test_a_path_that_differs_in_the_case_of_its_letters_is_listed_once(self) -> None:
        names = ["été.avi", "ÉTÉ.AVI", "movie.avi", "MOVIE.AVI", "ДОМ.avi", "дом.avi"]
        paths = [self.movies / name for name in names]
        for path in paths:
            path.touch()
        for system in SYSTEMS:
            with self.subTest(system):
                window = self.open_window(LANG=system, LOCPATH=str(self.locales))
                window.drop(paths, window.movie_list)
                self.assertEqual(window.movies, [str(path) for path in paths[::2]])
                self.close_window(window)


if __name__ == "__main__":
    unittest.main()
