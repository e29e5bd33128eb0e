"""A small window that files can be dragged out of.

    drag_source.py < PATHS

PATHS are file paths with a NUL between them. The window stands in the top left corner of the
screen. Standard output reports the steps, one word per line: "ready" (the window can be pressed),
"begun" (the files hang on the pointer), "accepted" (the window under the pointer would take them),
then "dropped" (it has taken them), "failed" or, when none of that has come in time, "late". The
program ends with the drag.
"""

import sys
from pathlib import Path

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402

DEADLINE_SECONDS = 20


def report(word: str) -> None:
    print(word, flush=True)


def end(word: str) -> None:
    report(word)
    Gtk.main_quit()


def on_begin(_window: Gtk.Window, context: Gdk.DragContext) -> None:
    context.connect(
        "action-changed",
        lambda _context, action: action == Gdk.DragAction.COPY and report("accepted"),
    )
    context.connect("dnd-finished", lambda _context: end("dropped"))
    report("begun")


def main() -> None:
    paths = sys.stdin.buffer.read().decode().split("\0")
    uris = [Path(path).as_uri() for path in paths]

    window = Gtk.Window(type=Gtk.WindowType.POPUP)
    window.resize(60, 60)
    window.move(0, 0)
    window.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, None, Gdk.DragAction.COPY)
    window.drag_source_add_uri_targets()
    window.connect("drag-begin", on_begin)
    window.connect("drag-data-get", lambda _window, _context, data, *_: data.set_uris(uris))
    window.connect("drag-failed", lambda *_: end("failed"))
    window.connect("map-event", lambda *_: report("ready"))
    GLib.timeout_add_seconds(DEADLINE_SECONDS, end, "late")
    window.show()
    Gtk.main()


if __name__ == "__main__":
    main()
