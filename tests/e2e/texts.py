"""The texts that the window should show, from the program's own table of translations."""

import re
from pathlib import Path

TABLE = Path(__file__).parents[2] / "src" / "i18n" / "table.cpp"


def _read_table() -> list[list[str]]:
    """The table's records, cell by cell; the first names the languages."""
    literals = re.findall(r'^ +L"(.*)"', TABLE.read_text(), re.MULTILINE)
    content = "".join(literals).replace(r"\u00a0", "\u00a0").replace(r"\"", '"')
    return [record.split("|") for record in content.split("§")]


_HEADER, *_RECORDS = _read_table()
LANGUAGES = [cell.split(":")[0] for cell in _HEADER]
for _key, *_cells in _RECORDS:
    assert len(_cells) == len(LANGUAGES), f"{_key} has texts for {len(_cells)} languages"
_TEXTS = {key: dict(zip(LANGUAGES, cells)) for key, *cells in _RECORDS}


def text(key: str, language: str = "English") -> str:
    """The text of that key, in English if the language has none."""
    return _TEXTS[key][language] or _TEXTS[key]["English"]


def html_words(key: str, language: str = "English") -> str:
    """The text of that key as an HTML box shows it."""
    return text(key, language).strip().replace("\u00a0", " ")
