"""The folders' layers are those that the linker sees.

A file may include the files of its own target, of those that the target links, and of those that
they link PUBLIC."""

import os
import re
import unittest
from pathlib import Path

from targets import PROJECT, included_file, includes, owner, reach, read_targets

TARGETS = read_targets(Path(os.environ["VANTREO_TARGETS"]))
DRAWING = PROJECT / "docs/architecture.md"

# Parts of the toolkit and of the desktop that know windows.
WINDOWS = re.compile(r"gtk|x11|osx_", re.IGNORECASE)


def sources() -> list[Path]:
    return [
        file
        for folder in ("src", "bundle", "protocol")
        for file in sorted((PROJECT / folder).rglob("*"))
        if file.suffix in (".cpp", ".h")
    ]


def closed(edges: dict[str, set[str]]) -> set[tuple[str, str]]:
    """Each pair that a way of edges leads along."""
    pairs = {(one, other) for one, others in edges.items() for other in others}
    while longer := {(a, d) for a, b in pairs for c, d in pairs if b == c} - pairs:
        pairs |= longer
    return pairs


def drawn() -> tuple[dict[str, str], dict[str, set[str]]]:
    """The libraries of the drawing with their folders, and its arrows."""
    text = DRAWING.read_text().partition("\n## Folders and arrows\n")[2]
    block = re.search(r"```mermaid\n(.*?)```", text, re.DOTALL).group(1)
    libraries = dict(re.findall(r'(\w+)\["([^"]+)"\]', block))
    arrows: dict[str, set[str]] = {name: set() for name in libraries}
    for one, others in re.findall(r'(\w+)(?:\["[^"]+"\])? --> ([\w &]+)', block):
        arrows[one] |= set(others.split(" & "))
    return libraries, arrows


def folders_of(label: str) -> set[Path]:
    """Those of a label, "bundle/core" or "src: base, web"."""
    parent, _, names = label.rpartition(": ")
    return {Path(parent, name) for name in names.split(", ")}


class Layers(unittest.TestCase):
    maxDiff = None

    def test_IncludesFollowTheLinks(self) -> None:
        wrong = []
        for file in sources():
            own = owner(TARGETS, file)
            self.assertIsNotNone(own, f"{file} belongs to no target: list it in one")
            allowed = {own} | reach(TARGETS, TARGETS[own])
            for name in includes(file):
                header = included_file(file, name)
                if header is not None and owner(TARGETS, header) not in allowed:
                    wrong.append(
                        f"{file.relative_to(PROJECT)} includes {name}, "
                        f"but {own} does not link {owner(TARGETS, header)}"
                    )
        self.assertEqual(wrong, [])

    def test_NothingBelowTheWindowLinksIt(self) -> None:
        for name in ("vantreo_base", "bundle_ffmpeg", "bundle_mp4box"):
            libraries = reach(TARGETS, TARGETS[name])
            self.assertIn("vantreo_protocol", libraries)
            self.assertEqual([each for each in libraries if WINDOWS.search(each)], [], name)

    def test_DrawingShowsTheLinks(self) -> None:
        libraries, arrows = drawn()
        built = {
            name: target for name, target in TARGETS.items() if target.is_library and target.sources
        }
        self.assertEqual(
            {name: folders_of(label) for name, label in libraries.items()},
            {name: target.folders for name, target in built.items()},
        )
        links = {name: target.links & built.keys() for name, target in built.items()}
        self.assertEqual(closed(arrows), closed(links))
        for one, others in arrows.items():
            for other in others:
                shorter = {**arrows, one: others - {other}}
                self.assertNotIn((one, other), closed(shorter), "an arrow that other arrows show")
