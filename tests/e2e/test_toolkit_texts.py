"""The toolkit's own texts follow the language of the window, whatever the system's language is."""

import re
import unittest
from typing import NamedTuple

from driver import Atspi, Page, Vantreo, descendants, has_state, press_key, wait_for
from samples import make_long_movie, make_movie
from texts import LANGUAGES, text
from window_case import WindowCase, make_locales


class Buttons(NamedTuple):
    yes: str
    no: str
    cancel: str
    open: str
    name: str  # the title of a column of the file dialogs


BUTTONS = {
    "English": Buttons("Yes", "No", "Cancel", "Open", "Name"),
    "Français": Buttons("Oui", "Non", "Annuler", "Ouvrir", "Nom"),
    "Español": Buttons("Sí", "No", "Cancelar", "Abrir", "Nombre"),
    "Italiano": Buttons("Sì", "No", "Annulla", "Apri", "Nome"),
    "Deutsch": Buttons("Ja", "Nein", "Abbrechen", "Öffnen", "Name"),
    "Polski": Buttons("Tak", "Nie", "Anuluj", "Otwórz", "Nazwa"),
    "Português": Buttons("Sim", "Não", "Cancelar", "Abrir", "Nome"),
    "Română": Buttons("Da", "Nu", "Renunță", "Deschide", "Nume"),
    "русский язык": Buttons("Да", "Нет", "Отменить", "Открыть", "Имя"),
}


def shown_names(control: Atspi.Accessible, role: Atspi.Role) -> list[str]:
    """The names of the visible controls of that role inside another one."""
    return [
        c.get_name()
        for c in descendants(control)
        if c.get_role() == role and has_state(c, Atspi.StateType.SHOWING)
    ]


def press(button: Atspi.Accessible) -> None:
    """Presses a button of the current page with the keyboard, which needs no delay as clicks do."""
    Atspi.Component.grab_focus(button)
    wait_for(lambda: has_state(button, Atspi.StateType.FOCUSED), f"the focused {button.get_name()}")
    press_key("Return")


class ToolkitTexts(WindowCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.locales = make_locales(cls, ("de_DE", "UTF-8"), ("fr_FR", "UTF-8"))

    def setUp(self) -> None:
        super().setUp()
        self.question_movie = make_movie(self.movies / "short.mkv", 1)
        (self.output / "short.mp4").touch()

    def open_on_system(self, locale: str, **environment: str) -> Vantreo:
        return self.open_window(LANG=locale, LOCPATH=str(self.locales), **environment)

    def assert_question(self, window: Vantreo, key: str, language: str) -> None:
        """A question with that text is open and has the language's buttons."""
        expected = BUTTONS[language]
        dialog = window.wait_for_keyboard_dialog()
        buttons = shown_names(dialog, Atspi.Role.PUSH_BUTTON)
        self.assertEqual(sorted(buttons), sorted([expected.yes, expected.no]))
        self.assertIn(text(key, language), "\n".join(shown_names(dialog, Atspi.Role.LABEL)))

    def assert_file_dialog(self, window: Vantreo, language: str) -> None:
        """A file or folder dialog is open and in that language."""
        expected = BUTTONS[language]
        dialog = window.wait_for_keyboard_dialog()
        buttons = shown_names(dialog, Atspi.Role.PUSH_BUTTON)
        self.assertIn(expected.cancel, buttons)
        self.assertIn(expected.open, buttons)
        titles = shown_names(dialog, Atspi.Role.TABLE_COLUMN_HEADER)
        self.assertIn(expected.name, titles)

    def assert_speaks(self, window: Vantreo, language: str) -> None:
        """The overwrite question and both file dialogs are in that language."""
        if window.movie_count == 0:
            window.drop([self.question_movie], window.movie_list)
        press(window.convert_button)
        self.assert_question(window, "confirmOverwrite", language)
        window.leave_dialog()
        for button in window.movies_button, window.output_button:
            press(button)
            self.assert_file_dialog(window, language)
            window.leave_dialog()

    def test_the_texts_have_the_saved_language_on_start(self) -> None:
        for system, language in ("de_DE", "Português"), ("fr_FR", "Deutsch"), ("fr_FR", "English"):
            with self.subTest(language):
                self.write_settings(Language=language)
                window = self.open_on_system(f"{system}.UTF-8")
                self.assert_speaks(window, language)
                self.close_window(window)

    def test_the_texts_follow_a_change_to_any_language(self) -> None:
        self.write_settings(Language="English")
        window = self.open_on_system("de_DE.UTF-8")
        self.assert_speaks(window, "English")
        for language in [*LANGUAGES[1:], "English"]:
            with self.subTest(language):
                window.open_next_page(Page.OPTIONS)
                window.choose(window.language_box, language)
                wait_for(lambda: window.language_box.get_name() == language, language)
                window.open_previous_page(Page.CONVERT)
                self.assert_speaks(window, language)

    def test_the_users_list_of_languages_does_not_count(self) -> None:
        self.write_settings(Language="Polski")
        window = self.open_on_system("de_DE.UTF-8", LANGUAGE="fr:en")
        self.assert_speaks(window, "Polski")

    def test_a_system_without_a_language_shows_the_window_s(self) -> None:
        for locale in "C.UTF-8", "C", "de_AT.UTF-8":  # the last is not installed
            with self.subTest(locale):
                self.write_settings(Language="Italiano")
                window = self.open_window(LANG=locale)
                self.assert_speaks(window, "Italiano")
                self.close_window(window)

    def test_the_cancel_question_has_the_buttons_of_the_window_s_language(self) -> None:
        movie = make_long_movie(self.movies / "movie.mkv")
        for language in "Deutsch", "русский язык":
            with self.subTest(language):
                self.write_settings(Language=language)
                window = self.open_on_system("fr_FR.UTF-8", **self.unhurried())
                window.drop([movie], window.movie_list)
                window.press_convert()
                wait_for(lambda: window.gauge > 0, "progress")
                window.press_convert()
                self.assert_question(window, "confirmCancel", language)
                window.answer(BUTTONS[language].yes)
                window.wait_for_status(text("labelConvert_canceled", language))
                self.close_window(window)

    def test_the_overwrite_question_names_its_own_button(self) -> None:
        for language in LANGUAGES:
            with self.subTest(language):
                quoted = re.findall("['„«]\\s?(\\w+)\\s?['”“»]", text("confirmOverwrite", language))
                self.assertEqual(quoted, [BUTTONS[language].no])


if __name__ == "__main__":
    unittest.main()
