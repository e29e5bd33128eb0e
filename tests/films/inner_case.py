"""Helpers for the tests of subtitles inside movies: they make such movies and read the resulting
tracks."""

import re
import struct
import subprocess
from pathlib import Path

from movie_case import DEADLINE, SMALL, MovieCase, picture, tone


def stamp(seconds: float) -> str:
    milliseconds = round(seconds * 1000)
    minutes, rest = divmod(milliseconds, 60_000)
    return f"00:{minutes:02}:{rest // 1000:02},{rest % 1000:03}"


def srt(*cues: tuple[float, float, str]) -> str:
    return "\n".join(
        f"{number}\n{stamp(start)} --> {stamp(end)}\n{text}\n"
        for number, (start, end, text) in enumerate(cues, 1)
    )


def boxes(content: bytes, *path: str) -> list[bytes]:
    """The contents of all boxes at this path."""
    if not path:
        return [content]
    found, at = [], 0
    while at + 8 <= len(content):
        (size,) = struct.unpack_from(">I", content, at)
        if content[at + 4 : at + 8] == path[0].encode():
            found += boxes(content[at + 8 : at + size], *path[1:])
        at += max(size, 8)
    return found


class InnerCase(MovieCase):
    def text(self, name: str, content: str | bytes) -> Path:
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def with_texts(
        self, name: str, texts: list[Path], *more: object, seconds: float = 2, rate: int = 25
    ) -> Path:
        """A movie with a tone and these texts, copied unchanged."""
        inputs = [word for text in texts for word in ("-i", text)]
        maps = [word for at in range(len(texts) + 2) for word in ("-map", at)]
        return self.movie(
            name,
            *(*picture(seconds, rate=rate), *tone(seconds), *inputs, *maps, *SMALL),
            *("-c:s", "copy", *more),
        )

    def arrived(self, track: int = 0) -> list[tuple[float, float, str]]:
        """The cues of a track of the MP4 file, with their times in seconds."""
        answer = subprocess.run(
            ["ffmpeg", "-nostdin", "-v", "error", "-i", self.out, "-map", f"0:s:{track}"]
            + ["-f", "srt", "-"],
            stdout=subprocess.PIPE,
            check=True,
            timeout=DEADLINE,
        ).stdout.decode()
        lines = answer.replace("\r\n", "\n") + "\n"
        found = re.findall(r"(\S+) --> (\S+)\n(.*?)\n\n", lines, re.DOTALL)
        return [(self.seconds(start), self.seconds(end), text) for start, end, text in found]

    @staticmethod
    def seconds(time: str) -> float:
        hours, minutes, rest = time.split(":")
        return int(hours) * 3600 + int(minutes) * 60 + float(rest.replace(",", "."))

    def heads(self) -> list[tuple[bool, int]]:
        """For each text track, whether it is enabled and its display flags."""
        tracks = boxes(self.out.read_bytes(), "moov", "trak")
        found = []
        for track in tracks:
            (entry,) = boxes(track, "mdia", "minf", "stbl", "stsd")
            if entry[12:16] == b"tx3g":
                (flags,) = struct.unpack_from(">I", entry, 24)
                found.append((boxes(track, "tkhd")[0][3] & 1 == 1, flags))
        return found

    def assert_cues(self, expected: list[tuple[float, float, str]], track: int = 0) -> None:
        arrived = self.arrived(track)
        self.assertEqual([text for _, _, text in arrived], [text for _, _, text in expected])
        for one, other in zip(arrived, expected):
            self.assertAlmostEqual(one[0], other[0], delta=0.04)
            self.assertAlmostEqual(one[1], other[1], delta=0.04)

    def note(self) -> Path:
        return self.out.with_name("out.mp4.failed.txt")
