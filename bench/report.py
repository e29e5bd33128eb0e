"""Draws the results of the benchmark and writes their table into a document.

    report.py RESULTS PICTURE [DOCUMENT]

In the document, the table is between the two lines of MARKERS.
"""

import json
import sys
from collections.abc import Iterator
from pathlib import Path
from typing import Any

MARKERS = ("<!-- figures: written by bench/run -->", "<!-- end of the figures -->")
TITLES = {
    "run": "A whole run against the bare encoder",
    "HandBrake": "Against HandBrakeCLI",
    "probe": "From Convert to the first transcode, against bare ffprobe",
    "start": "Start, against the smallest wxWidgets program",
    "memory": "Memory and idle time",
    "stalls": "Longest stall of the window",
    "growth": "Growth with the number of movies",
}
VERDICTS = {True: "yes", False: "**no**", None: ""}
MET_COLOURS = {True: "tab:green", False: "tab:red", None: "tab:grey"}

Figure = dict[str, Any]


def figures(results: dict[str, Any]) -> dict[str, list[Figure]]:
    """All figures by the keys of TITLES, in its order."""
    found: dict[str, list[Figure]] = {key: [] for key in TITLES}
    for part in results["parts"].values():
        for figure in part.get("figures", []):
            found[figure["part"]].append(figure)
    return found


def value_text(figure: Figure) -> str:
    unit = "" if figure["unit"] in ("", "ratio") else f" {figure['unit']}"
    return f"{figure['value']:.4g}{unit}"


def pairs_text(figure: Figure) -> str:
    ratios = figure["samples"].get("ratios", [])
    return f"{min(ratios):.4g} to {max(ratios):.4g} in {len(ratios)}" if len(ratios) > 1 else ""


def table(results: dict[str, Any]) -> Iterator[str]:
    machine = results["machine"]
    yield f"Measured on {machine['processors']} processors ({machine['processor']}) with"
    yield f"{machine['tools']}."
    for part, content in results["parts"].items():
        if content.get("quick"):
            yield f"**The part `{part}` was measured with `--quick`.**"
        if "failed" in content:
            yield f"**The part `{part}` failed: {content['failed']}.**"
    yield ""
    yield "| Figure | Measured | Limit | Met | Ratios of the pairs | |"
    yield "|---|---|---|---|---|---|"
    for key, rows in figures(results).items():
        if rows:
            yield f"| **{TITLES[key]}** | | | | | |"
        for row in rows:
            limit = "" if row["limit"] is None else f"{row['limit']:.3g}"
            cells = (row["name"], value_text(row), limit, VERDICTS[row["is_met"]],
                     pairs_text(row), row["note"])  # fmt: skip
            yield "| " + " | ".join(cells) + " |"


def rewrite(document: Path, results: dict[str, Any]) -> None:
    before, rest = document.read_text().split(MARKERS[0])
    _, after = rest.split(MARKERS[1])
    lines = [MARKERS[0], *table(results), MARKERS[1]]
    document.write_text(before + "\n".join(lines) + after)


def draw(picture: Path, results: dict[str, Any]) -> None:
    """One chart for each group: a dot for each pair, a bar for the figure, a line for its limit."""
    import matplotlib

    matplotlib.use("agg")
    from matplotlib import pyplot

    groups = [(key, rows) for key, rows in figures(results).items() if rows]
    heights = [len(rows) + 1 for _, rows in groups]
    _, charts = pyplot.subplots(
        len(groups), figsize=(10, 0.42 * sum(heights) + 1), height_ratios=heights, squeeze=False
    )
    for (key, rows), chart in zip(groups, charts.flat, strict=True):
        draw_group(chart, rows)
        chart.set_title(TITLES[key], loc="left", fontsize=10, fontweight="bold")
    pyplot.tight_layout()
    pyplot.savefig(picture, dpi=100, metadata={"Software": None})


def draw_group(chart: Any, rows: list[Figure]) -> None:
    """Each value relative to its limit, so that figures of any unit fit in one chart; a ratio without
    a limit as it is."""
    for place, row in enumerate(rows):
        mark = row["limit"] or 1
        chart.barh(place, row["value"] / mark, color=MET_COLOURS[row["is_met"]], height=0.6)
        ratios = [ratio / mark for ratio in row["samples"].get("ratios", [])]
        chart.plot(ratios, [place] * len(ratios), "k.", markersize=4)
        label = value_text(row) + ("" if row["limit"] is None else f" (at most {row['limit']:.3g})")
        chart.annotate(label, (0, place), xytext=(4, 0), textcoords="offset points", va="center",
                       fontsize=8)  # fmt: skip
    chart.axvline(1, color="black", linestyle="--", linewidth=1)
    chart.set_yticks(range(len(rows)), [row["name"] for row in rows], fontsize=8)
    chart.tick_params(axis="x", labelsize=8)
    chart.invert_yaxis()


def main() -> None:
    results = json.loads(Path(sys.argv[1]).read_text())
    draw(Path(sys.argv[2]), results)
    if len(sys.argv) > 3:
        rewrite(Path(sys.argv[3]), results)


if __name__ == "__main__":
    main()
