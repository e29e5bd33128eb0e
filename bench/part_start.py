"""The time from process start to a usable window, compared with the smallest wxWidgets program."""

from driver import Atspi, Page
from figures import Figure, in_turns, ratio_figure
from ground import LAUNCHER, Scale, say
from site_server import SiteServer, http_reply, send
from smallest import smallest_started, started

SAME_VERSION = http_reply("CURRENT_VERSION=>1.24<=CURRENT_VERSION")
# How long the version check shows its answer before the pages replace it.
ANSWER_SECONDS = 0.5


def has_pages(frame: Atspi.Accessible) -> bool:
    """Whether the notebook with the program's pages exists."""
    part = frame
    while part and part.get_role() != Atspi.Role.PAGE_TAB_LIST:
        part = part.get_child_at_index(0)
    return part is not None and part.get_child_count() == len(Page)


def program_start(site: str) -> dict[str, float]:
    with started(LAUNCHER, has_pages, {"VANTREO_SITE": site}) as (_, seconds):
        return {"wall": seconds - ANSWER_SECONDS}


def smallest_start() -> dict[str, float]:
    with smallest_started() as (_, seconds):
        return {"wall": seconds}


def measure(scale: Scale) -> list[Figure]:
    with SiteServer(send(SAME_VERSION)) as site:
        say(f"{scale.starts} times: the program, the smallest one")
        legs = {"ours": lambda: program_start(site.address), "smallest": smallest_start}
        results = in_turns(scale.starts, legs)
    ours, smallest = results["ours"]["wall"], results["smallest"]["wall"]
    return [ratio_figure("start", "to a usable window", ours, smallest, 1.3)]
