"""The version check on start, against each test's own web site."""

import socket
import threading
import time
import unittest
from collections.abc import Callable

from driver import (
    Atspi,
    Gdk,
    Program,
    click,
    has_state,
    place_on_screen,
    press_key,
    wait_for,
    xdotool,
)
from pixels import Drawing, find_drawing, width_of
from site_server import (
    Answer,
    SiteServer,
    drip,
    http_reply,
    send,
    send_after,
    send_and_stay,
    stay_silent,
)
from texts import text
from window_case import WindowCase

REQUEST = r"^GET /current_version\.php\?version=1\.24&os=Linux HTTP/1\.[01]$"

GREEN = (10, 201, 26)
# The label's rows in the window, and the middle of its columns.
LABEL_TOP, LABEL_BOTTOM = 120, 140
LABEL_MIDDLE = 365
# Left, top, width and height of the button in the window.
BUTTON = (210, 145, 300, 45)

SHOWN_SECONDS = 0.5
BEFORE_CLOSING_SECONDS = 3
# From the request to a usable window: after an answer, with other tests running, and after the
# program gives up.
ANSWERED_SECONDS = 4.5
SOONEST_GIVEN_UP_SECONDS, LATEST_GIVEN_UP_SECONDS = 4, 6.5


def release_text(version: str) -> str:
    return f"CURRENT_VERSION=>{version}<=CURRENT_VERSION"


NEWER = http_reply(release_text("1.25"))
SAME = http_reply(release_text("1.24"))


def find_label(program: Program) -> Drawing | None:
    """The window's upper part with the check screen's label; None before it appears."""
    if picture := program.picture_inside():
        return find_drawing(picture.new_subpixbuf(0, 0, picture.get_width(), LABEL_BOTTOM + 1))
    return None


def shows_pages(program: Program) -> bool:
    """Whether the window shows the pages' titles, which are above the check screen's label."""
    drawing = find_label(program)
    return drawing is not None and drawing.background != (0, 0, 0) and drawing.top < LABEL_TOP


class VersionCase(WindowCase):
    def serve(self, answer: Answer) -> SiteServer:
        return self.enterContext(SiteServer(answer))

    def start(self, site: str, **environment: str) -> Program:
        """The program with that site; it ends with the test."""
        return self.enterContext(Program(environment={"VANTREO_SITE": site} | environment))

    def wait_for_label(self, program: Program, words: str, is_green: bool) -> None:
        """Waits until the check screen shows these words, painted and with nothing above them."""

        def is_shown() -> bool:
            label = find_label(program)
            return (
                label is not None
                and label.background != (0, 0, 0)
                and (GREEN in label.colours) == is_green
                and LABEL_TOP <= label.top < label.bottom < LABEL_BOTTOM
                and abs((label.left + label.right) / 2 - LABEL_MIDDLE) <= 2
                and abs(label.right - label.left + 1 - width_of(words)) <= 2
            )

        wait_for(is_shown, words, 5)

    def start_with_newer_version(
        self, site: str, language: str, **environment: str
    ) -> tuple[Program, Atspi.Accessible]:
        """The program and its button once it offers the newer version, and nothing else."""
        self.write_settings(Language=language)
        program = self.start(site, **environment)
        label = text("buttonGetNewVersion", language)

        def find_button() -> Atspi.Accessible | None:
            buttons = program.controls(Atspi.Role.PUSH_BUTTON)
            return next((b for b in buttons if b.get_name() == label), None)

        button = wait_for(find_button, label)
        wait_for(lambda: program.is_ready, "a usable window")
        words = text("labelCheckVersion_yes", language)
        self.wait_for_label(program, words, True)
        labels = [label.get_name() for label in program.controls(Atspi.Role.LABEL)]
        self.assertEqual(labels, [words])
        self.assertEqual(len(program.controls(Atspi.Role.PUSH_BUTTON)), 1)
        self.assertEqual(program.controls(Atspi.Role.PAGE_TAB), [])
        return program, button

    def fetch(self, *presses: Callable[[Atspi.Accessible], None]) -> tuple[float, float]:
        """Presses the button, and goes on once the page is open, while the program waits to close.

        One page must open. Returns the seconds from the first press to the end of the last one, and
        to the end of the program.
        """
        server = self.serve(send(NEWER))
        program, button = self.start_with_newer_version(server.address, "English")
        pages = len(self.opened_pages())
        began = time.monotonic()
        presses[0](button)
        self.wait_for_pages(pages + 1)
        for press in presses[1:]:
            press(button)
        pressed = time.monotonic()
        self.assertEqual(program.wait_for_end(), 0)
        ended = time.monotonic()
        self.assertEqual(self.opened_pages()[pages:], [f"{server.address}Download"])
        return pressed - began, ended - began


class Answers(VersionCase):
    def test_a_newer_version_is_fetched_with_the_browser(self) -> None:
        expected = []
        for language, page, slash in (
            ("English", "Download", ""),
            ("Français", "FR/Telecharger", "/"),
            ("Español", "Download", "/"),
        ):
            with self.subTest(language):
                server = self.serve(send(NEWER))
                site = f"http://{server.host}"
                expected.append(f"{site}/{page}")
                program, button = self.start_with_newer_version(site + slash, language)
                self.assertRegex(server.request_lines[0], REQUEST)

                clicked = time.monotonic()
                click(button)
                self.wait_for_pages(len(expected))
                self.assertEqual(program.wait_for_end(), 0)
                self.assertGreaterEqual(time.monotonic() - clicked, BEFORE_CLOSING_SECONDS)
                self.assertEqual(self.opened_pages(), expected)

    def test_enter_and_space_fetch_it(self) -> None:
        for key in ("Return", "KP_Enter", "space"):
            with self.subTest(key):
                self.fetch(lambda _, key=key: press_key(key))

    def test_the_button_has_its_place_and_the_keyboard(self) -> None:
        server = self.serve(send(NEWER))
        program, button = self.start_with_newer_version(server.address, "English")
        _, left, top = Gdk.Screen.get_default().get_window_stack()[0].get_origin()
        box = place_on_screen(button)
        self.assertEqual((box.x - left, box.y - top, box.width, box.height), BUTTON)
        wait_for(lambda: has_state(button, Atspi.StateType.FOCUSED), "the focused button")
        self.assertTrue(has_state(button, Atspi.StateType.IS_DEFAULT))
        self.close_window(program)

    def test_a_newer_version_is_found_through_the_proxy(self) -> None:
        for name in ("http_proxy", "HTTP_PROXY"):
            with self.subTest(name):
                proxy = self.serve(send(NEWER))
                program, _ = self.start_with_newer_version(
                    "http://no-such-name.invalid:8080/", "English", **{name: proxy.host}
                )
                self.assertRegex(
                    proxy.request_lines[0],
                    REQUEST.replace("/", "http://no-such-name.invalid:8080/", 1),
                )
                self.close_window(program)

    def test_no_proxy_is_used_for_a_site_that_the_environment_excludes(self) -> None:
        proxy = self.serve(send(NEWER))
        window = self.open_window(
            VANTREO_SITE="http://no-such-name.invalid/", http_proxy=proxy.host, no_proxy=".invalid"
        )
        self.close_window(window)
        self.assertEqual(proxy.accepted, [])

    def test_a_newer_version_is_offered_at_once_although_the_connection_stays_open(self) -> None:
        server = self.serve(send_and_stay(NEWER))
        program, _ = self.start_with_newer_version(server.address, "English")
        wait_for(lambda: server.answered, "the end of the connection")
        self.assertLess(server.answered[0] - server.accepted[0], ANSWERED_SECONDS)
        self.close_window(program)

    def test_any_other_answer_leads_to_the_window(self) -> None:
        filler = "x" * 10_000_000
        for what, reply in {
            "no markers": http_reply("1.25"),
            "an empty page": http_reply(),
            "no answer": b"",
            "an error": http_reply(release_text("1.25"), "500 Internal Server Error"),
            "a newer version after 10 MB": http_reply(filler + release_text("1.25")),
            "an older version before 10 MB": http_reply(release_text("1.23") + filler),
        }.items():
            with self.subTest(what):
                server = self.serve(send(reply))
                window = self.open_window(VANTREO_SITE=server.address)
                self.assertLess(time.monotonic() - server.accepted[0], ANSWERED_SECONDS)
                self.close_window(window)
        self.assertEqual(self.opened_pages(), [])

    def test_a_redirect_is_not_followed_and_this_machine_needs_no_proxy(self) -> None:
        target, proxy = self.serve(send(NEWER)), self.serve(send(NEWER))
        server = self.serve(send(http_reply("", "302 Found", f"Location: {target.address}")))
        window = self.open_window(
            VANTREO_SITE=server.address, HTTP_PROXY=proxy.host, http_proxy=proxy.address
        )
        self.assertLess(time.monotonic() - server.accepted[0], ANSWERED_SECONDS)
        self.close_window(window)
        self.assertEqual(len(server.accepted), 1)
        self.assertEqual(target.accepted + proxy.accepted, [])

    def test_a_site_that_cannot_be_reached_leads_to_the_window(self) -> None:
        # Bound but not listening: refused, and not used by another program.
        with socket.socket() as closed:
            closed.bind(("127.0.0.1", 0))
            window = self.open_window(VANTREO_SITE=f"http://127.0.0.1:{closed.getsockname()[1]}/")
            self.assertLess(time.monotonic() - window.started, ANSWERED_SECONDS)
            self.close_window(window)

    def test_closing_during_the_request_ends_the_program_afterwards(self) -> None:
        may_answer = threading.Event()
        self.addCleanup(may_answer.set)
        for what, answer in {
            "an answer": send_after(may_answer, SAME),
            "no answer": stay_silent,
        }.items():
            with self.subTest(what):
                program = self.start(self.serve(answer).address)
                self.wait_for_label(program, text("labelCheckVersion_ing"), False)
                program.close()
                may_answer.set()
                self.assertEqual(program.wait_for_end(), 0)
        self.assertEqual(self.opened_pages(), [])


class Times(VersionCase):
    """Measurements that need an otherwise idle machine."""

    def test_the_screen_is_visible_during_the_request_and_after_the_answer(self) -> None:
        for language in ("English", "Français"):
            with self.subTest(language):
                self.write_settings(Language=language)
                may_answer = threading.Event()
                server = self.serve(send_after(may_answer, SAME))
                self.addCleanup(may_answer.set)
                program = self.start(server.address)
                wait_for(lambda: server.request_lines, "the request")
                self.assertRegex(server.request_lines[0], REQUEST)
                self.wait_for_label(program, text("labelCheckVersion_ing", language), False)

                answered = time.monotonic()
                may_answer.set()
                self.wait_for_label(program, text("labelCheckVersion_no", language), True)
                wait_for(lambda: shows_pages(program), "the pages")
                seconds = time.monotonic() - answered
                self.assertGreaterEqual(seconds, SHOWN_SECONDS)
                self.assertLess(seconds, SHOWN_SECONDS + 1)
                wait_for(lambda: program.is_ready, "a usable window")
                self.close_window(program)

    def assert_in_time(self, *presses: Callable[[Atspi.Accessible], None]) -> None:
        """These presses must end the program as soon as one alone."""
        pressed, ended = self.fetch(*presses)
        self.assertLess(pressed, BEFORE_CLOSING_SECONDS)
        self.assertGreaterEqual(ended, BEFORE_CLOSING_SECONDS)
        self.assertLess(ended, BEFORE_CLOSING_SECONDS + 1.5)

    def test_more_presses_open_no_more_pages_and_do_not_prolong_the_wait(self) -> None:
        # The program does not answer while it waits, so the button's place must be known.
        def double_click(button: Atspi.Accessible) -> None:
            click(button, times=2)

        def click_again(_: Atspi.Accessible) -> None:
            xdotool("click", 1)

        def press_again(_: Atspi.Accessible) -> None:
            press_key("Return")

        self.assert_in_time(double_click, click_again, press_again, click_again, press_again)

    def test_closing_during_the_wait_ends_the_program_too(self) -> None:
        self.assert_in_time(click, lambda _: press_key("alt+F4"))

    def test_closing_instead_of_fetching_does_not_ask(self) -> None:
        server = self.serve(send(NEWER))
        program, _ = self.start_with_newer_version(server.address, "English")
        closed = time.monotonic()
        self.close_window(program)
        self.assertLess(time.monotonic() - closed, 1)
        self.assertEqual(self.opened_pages(), [])

    def test_a_site_that_does_not_finish_is_given_up(self) -> None:
        for what, answer in {"silent": stay_silent, "a byte a second": drip(NEWER)}.items():
            with self.subTest(what):
                server = self.serve(answer)
                program = self.start(server.address)
                # By the picture: a program that waits does not answer the accessibility bus, and
                # that would wait in its turn.
                wait_for(lambda: shows_pages(program), "the pages")
                seconds = time.monotonic() - server.accepted[0]
                self.assertGreaterEqual(seconds, SOONEST_GIVEN_UP_SECONDS)
                self.assertLess(seconds, LATEST_GIVEN_UP_SECONDS)
                wait_for(lambda: program.is_ready, "a usable window")
                wait_for(lambda: server.answered, "the end of the connection", 2)
                closed = time.monotonic()
                self.close_window(program)
                self.assertLess(time.monotonic() - closed, 1)

    def test_a_site_whose_name_is_unknown_leads_to_the_window(self) -> None:
        window = self.open_window(VANTREO_SITE="http://no-such-name.invalid/")
        self.assertLess(time.monotonic() - window.started, LATEST_GIVEN_UP_SECONDS)
        self.close_window(window)


if __name__ == "__main__":
    unittest.main()
