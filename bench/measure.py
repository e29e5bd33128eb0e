"""Measures the program, part by part, and writes the results.

    measure.py [--quick] [PART...]

The parts are those of PARTS; all of them by default. To be run inside tests/with_display, as
bench/run does. The results of parts that are left out stay as they were.
"""

import argparse
import importlib
import json
import os
import platform
import subprocess
import time
import traceback
from pathlib import Path
from typing import Any

import ground

PARTS = ("start", "memory", "stalls", "growth", "probe", "run")
HERE = Path(__file__).resolve().parent


def machine() -> dict[str, Any]:
    model = next(
        (line.split(": ", 1)[1] for line in Path("/proc/cpuinfo").read_text().splitlines()
         if line.startswith("model name")), platform.machine(),
    )  # fmt: skip
    return {"processor": model, "processors": len(os.sched_getaffinity(0)), "tools": versions()}


def versions() -> str:
    packages = ["ffmpeg", "handbrake-cli", "libwxgtk3.2-1", "libgtk-3-0"]
    answer = subprocess.run(
        ["dpkg-query", "-W", "-f", "${Package} ${Version}, ", *packages],
        capture_output=True, text=True,
    )  # fmt: skip
    return answer.stdout.removesuffix(", ")


def measured(part: str, scale: ground.Scale) -> dict[str, Any]:
    """The part's figures, or the error if it failed: the other parts continue."""
    print(f"{part}:", flush=True)
    began = time.monotonic()
    try:
        figures = importlib.import_module(f"part_{part}").measure(scale)
    except Exception as error:
        traceback.print_exc()
        return {"failed": f"{type(error).__name__}: {error}"}
    for figure in figures:
        mark = "" if figure.limit is None else f" (at most {figure.limit:g})"
        verdict = {True: "met", False: "MISSED", None: ""}[figure.is_met]
        print(f"  {figure.name}: {figure.value:.4g} {figure.unit}{mark} {verdict} {figure.note}")
    print(f"  took {time.monotonic() - began:.0f} s", flush=True)
    return {"figures": [figure.to_json() for figure in figures]}


def main() -> int:
    parser = argparse.ArgumentParser(prog="bench/run", description="Measures the program.")
    parser.add_argument("part", nargs="*", help=" ".join(PARTS) + "; all by default")
    parser.add_argument("--quick", action="store_true", help="fewer, shorter samples: only a check")
    parser.add_argument("--results", type=Path, default=HERE / "results.json")
    chosen = parser.parse_args()
    if unknown := set(chosen.part) - set(PARTS):
        parser.error(f"no such part: {' '.join(sorted(unknown))}")
    scale = ground.QUICK if chosen.quick else ground.Scale()

    results = json.loads(chosen.results.read_text()) if chosen.results.exists() else {"parts": {}}
    results["machine"] = machine()
    for part in [part for part in PARTS if part in (chosen.part or PARTS)]:
        results["parts"][part] = measured(part, scale) | {"quick": chosen.quick}
        chosen.results.write_text(json.dumps(results, indent=1, ensure_ascii=False) + "\n")
    return int(any("failed" in part for part in results["parts"].values()))


if __name__ == "__main__":
    raise SystemExit(main())
