"""The build's targets: which files they have and what they link."""

import re
from dataclasses import dataclass, field
from functools import cached_property
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]


@dataclass
class Target:
    name: str
    is_library: bool
    folder: Path
    sources: set[Path] = field(default_factory=set)
    links: set[str] = field(default_factory=set)
    passes: set[str] = field(default_factory=set)

    @cached_property
    def folders(self) -> set[Path]:
        """Those of the sources, from the project's."""
        return {source.parent.relative_to(PROJECT) for source in self.sources}


def read_targets(file: Path) -> dict[str, Target]:
    targets: dict[str, Target] = {}
    target = None
    for line in file.read_text().splitlines():
        word, value = line.split(" ", 1)
        if word == "target":
            name, kind, folder = value.split(" ", 2)
            target = targets[name] = Target(name, "LIBRARY" in kind, Path(folder))
        elif word == "source":
            source = target.folder / value
            if source.is_relative_to(PROJECT) and source.exists():
                target.sources.add(source)
        elif word == "links":
            target.links.add(value)
        elif not value.startswith("$<LINK_ONLY:"):
            target.passes.add(value)
    return targets


def reach(targets: dict[str, Target], target: Target) -> set[str]:
    """What the target links, with what that passes on."""
    reached: set[str] = set()
    waiting = set(target.links)
    while waiting:
        name = waiting.pop()
        if name not in reached:
            reached.add(name)
            waiting |= targets[name].passes if name in targets else set()
    return reached


INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def includes(file: Path) -> list[str]:
    return INCLUDE.findall(file.read_text())


def included_file(file: Path, name: str) -> Path | None:
    """A header of the project, also one that the build makes from NAME.in."""
    for folder in (file.parent, PROJECT, PROJECT / "src", PROJECT / "bundle"):
        for candidate in (folder / name, folder / f"{name}.in"):
            if candidate.exists():
                return candidate
    return None


def owner(targets: dict[str, Target], file: Path) -> str | None:
    """The target of a source; of a header, that of the source of the same name, or the only library
    of its folder, or the one that lists it."""
    twin = file.with_suffix(".cpp")
    of_file = [t.name for t in targets.values() if file in t.sources or twin in t.sources]
    of_folder = [
        t.name
        for t in targets.values()
        if t.is_library and file.parent.relative_to(PROJECT) in t.folders
    ]
    if of_file:
        return of_file[0]
    return of_folder[0] if len(of_folder) == 1 else None
