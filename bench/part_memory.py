"""Memory during a conversion, compared with the smallest wxWidgets program, and the processor time
of the idle program."""

import time

from figures import Figure, in_turns, ratio_figure
from ground import (
    Scale,
    drop_all,
    folder,
    make_movies,
    press,
    say,
    wait_for_completion,
    window,
)  # fmt: skip
from readings import own_seconds, peak_memory
from smallest import smallest_started

MOVIE_SECONDS = 5
# Processor time a minute that nobody notices.
LONGEST_IDLE_SECONDS = 0.1
IDLE_MARK_SECONDS = 60
# Until the controls of a new window have faded in.
SETTLING_SECONDS = 3


def measure(scale: Scale) -> list[Figure]:
    with folder() as work:
        output = work / "out"
        output.mkdir()
        movies = make_movies(work, 1, MOVIE_SECONDS)

        def converting() -> dict[str, float]:
            for made in output.iterdir():
                made.unlink()
            with window(output) as opened:
                drop_all(opened, movies)
                press(opened.convert_button)
                wait_for_completion(opened)
                return {"peak": peak_memory(opened.pid)}

        def smallest() -> dict[str, float]:
            with smallest_started() as (pid, _):
                return {"peak": peak_memory(pid)}

        say(f"{scale.pairs} times: the program converting, the smallest one")
        results = in_turns(scale.pairs, {"ours": converting, "smallest": smallest})
        say(f"the program idle for {scale.idle_seconds} s")
        with window(output) as opened:
            time.sleep(SETTLING_SECONDS)
            before = own_seconds(opened.pid)
            time.sleep(scale.idle_seconds)
            idle = own_seconds(opened.pid) - before
    ours, smallest_ones = results["ours"]["peak"], results["smallest"]["peak"]
    note = f"{ours[0] / 1024:.1f} MiB against {smallest_ones[0] / 1024:.1f} MiB"
    limit = LONGEST_IDLE_SECONDS * scale.idle_seconds / IDLE_MARK_SECONDS
    return [
        ratio_figure("memory", "peak while converting", ours, smallest_ones, 1.25, note),
        Figure("memory", f"processor time idle for {scale.idle_seconds} s", idle, "s", limit),
    ]
