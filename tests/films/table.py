"""The table of movies and faults, docs/films.md: every case that the tests here create, and the
result. Each test adds the rows that it measured, each test program writes its part to the build
folder, and the parts are joined.

    table.py check PARTS DOCUMENT NAME...   compares the joined table with the document
    table.py write PARTS DOCUMENT NAME...   replaces the document with it

PARTS is the folder with the parts, each NAME one of them.
"""

import atexit
import difflib
import json
import os
import sys
from pathlib import Path

SECTIONS = [
    "The movie",
    "The MP4 file",
    "Subtitles",
    "Subtitles inside the movie",
    "The program around them",
]

INTRODUCTION = """\
# Movies and faults

How the tools in `bundle/` handle all kinds of movies and faults. Each row is a case that a test in
`tests/films` creates with public tools and passes to the real tools as the program does; the
right-hand column is the measured result. The tests generate this table and fail if it differs from
this file; `cmake --build --preset release --target films-table` runs them and updates it.
[A collection of movies](collection.md) shows the results for movies from many makers.
"""

_rows: list[tuple[str, str, str | None]] = []


def row(section: str, case: str, outcome: str) -> None:
    """Adds a row. The outcome is the measured result, worded the same in every run."""
    assert section in SECTIONS, section
    _rows.append((section, case, outcome))


def unmeasured(section: str, case: str) -> None:
    """Marks a case that this machine cannot create: its row in the document stays."""
    _rows.append((section, case, None))


def _keep_part() -> None:
    part = os.environ.get("FILMS_PART")
    if part and _rows:
        Path(part).parent.mkdir(parents=True, exist_ok=True)
        Path(part).write_text(json.dumps(_rows, ensure_ascii=False), encoding="utf-8")


atexit.register(_keep_part)


def _cell(text: str) -> str:
    return text.replace("|", "\\|").replace("\n", " ")


def _known_lines(document: Path) -> dict[str, str]:
    """The rows of the document, by their first cell."""
    lines = document.read_text(encoding="utf-8").splitlines() if document.exists() else []
    return {line[: line.index(" | ", 2) + 3]: line for line in lines if line.startswith("| ")}


def joined(parts: Path, names: list[str], document: Path) -> str:
    rows = [row for name in names for row in json.loads((parts / f"{name}.json").read_bytes())]
    known = _known_lines(document)
    text = INTRODUCTION
    for section in SECTIONS:
        lines = []
        for _, case, outcome in (row for row in rows if row[0] == section):
            start = f"| {_cell(case)} | "
            lines.append(known.get(start, "") if outcome is None else f"{start}{_cell(outcome)} |")
        if lines:
            text += f"\n## {section}\n\n| Case | What comes out |\n|---|---|\n"
            text += "\n".join(lines) + "\n"
    return text


def main(task: str, parts: Path, document: Path, names: list[str]) -> int:
    table = joined(parts, names, document)
    (parts / "films.md").write_text(table, encoding="utf-8")
    if task == "write":
        document.write_text(table, encoding="utf-8")
        return 0
    present = document.read_text(encoding="utf-8") if document.exists() else ""
    difference = difflib.unified_diff(
        present.splitlines(), table.splitlines(), str(document), "measured", lineterm=""
    )
    print("\n".join(difference))
    return int(present != table)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3]), sys.argv[4:]))
