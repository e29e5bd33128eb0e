"""A strict reader of MP4 files: their boxes, and what is wrong with them."""

import struct
from dataclasses import dataclass, field
from pathlib import Path

HOLDERS = {b"moov", b"trak", b"mdia", b"minf", b"stbl", b"edts", b"udta"}
TOLERATED = 0.05  # seconds


@dataclass
class Box:
    name: bytes
    start: int
    data: bytes
    inner: list["Box"] = field(default_factory=list)

    def all(self, *path: bytes) -> list["Box"]:
        found = [self]
        for name in path:
            found = [box for holder in found for box in holder.inner if box.name == name]
        return found

    def one(self, *path: bytes) -> "Box":
        found = self.all(*path)
        if len(found) != 1:
            raise ValueError(f"{len(found)} boxes {b'/'.join(path).decode()}")
        return found[0]


def read_boxes(data: bytes, start: int = 0) -> list[Box]:
    boxes, at = [], 0
    while at < len(data):
        if len(data) - at < 8:
            raise ValueError(f"{len(data) - at} stray bytes at {start + at}")
        size, name = struct.unpack_from(">I4s", data, at)
        head = 8
        if size == 1:
            (size,) = struct.unpack_from(">Q", data, at + 8)
            head = 16
        if size < head or at + size > len(data):
            raise ValueError(f"box {name!r} of {size} bytes does not fit")
        body = data[at + head : at + size]
        inner = read_boxes(body, start + at + head) if name in HOLDERS else []
        boxes.append(Box(name, start + at, body, inner))
        at += size
    return boxes


def numbers(data: bytes, form: str, at: int) -> list[tuple]:
    (count,) = struct.unpack_from(">I", data, at)
    size = struct.calcsize(">" + form)
    if at + 4 + count * size > len(data):
        raise ValueError("a table is longer than its box")
    return [struct.unpack_from(">" + form, data, at + 4 + n * size) for n in range(count)]


def timed(data: bytes, at: int) -> tuple[int, int]:
    """The time scale and the duration in mvhd and mdhd."""
    if data[0] == 1:
        return struct.unpack_from(">IQ", data, at + 8)
    return struct.unpack_from(">II", data, at)


@dataclass
class Track:
    kind: str
    scale: int
    duration: float
    shown: tuple[float, float]
    shown_for: float
    edits: list[tuple[int, int]]
    samples: int
    coded_for: float
    entry: bytes
    problems: list[str]


def sample_places(table: Box) -> list[tuple[int, int]]:
    """The position of each chunk, and its number of samples."""
    wide = table.all(b"co64")
    offsets = numbers((wide or table.all(b"stco"))[0].data, "Q" if wide else "I", 4)
    runs = numbers(table.one(b"stsc").data, "III", 4)
    places = []
    for at, (first, count, _) in enumerate(runs):
        last = runs[at + 1][0] if at + 1 < len(runs) else len(offsets) + 1
        places += [(offsets[chunk - 1][0], count) for chunk in range(first, last)]
    return places


def sample_sizes(table: Box) -> list[int]:
    same, count = struct.unpack_from(">II", table.one(b"stsz").data, 4)
    if same:
        return [same] * count
    return [size for (size,) in numbers(table.one(b"stsz").data, "I", 8)]


def outside(table: Box, media: list[tuple[int, int]]) -> int:
    """The number of samples outside the media data or outside of all chunks."""
    sizes, at, wrong = sample_sizes(table), 0, 0
    for start, count in sample_places(table):
        for size in sizes[at : at + count]:
            wrong += not any(first <= start <= start + size <= end for first, end in media)
            start += size
        at += count
    return wrong + abs(len(sizes) - at)


def read_edits(track: Box) -> list[tuple[int, int]]:
    lists = track.all(b"edts", b"elst")
    if not lists:
        return []
    form = "QqI" if lists[0].data[0] == 1 else "IiI"
    return [(length, start) for length, start, _ in numbers(lists[0].data, form, 4)]


def read_track(track: Box, movie_scale: int, media: list[tuple[int, int]]) -> Track:
    head = track.one(b"tkhd").data
    scale, duration = timed(track.one(b"mdia", b"mdhd").data, 12)
    table = track.one(b"mdia", b"minf", b"stbl")
    runs = numbers(table.one(b"stts").data, "II", 4)
    width, height = struct.unpack_from(">II", head, len(head) - 8)
    (shown_for,) = (
        struct.unpack_from(">Q", head, 28) if head[0] else struct.unpack_from(">I", head, 20)
    )
    sizes = sample_sizes(table)
    problems = []
    if sum(count for count, _ in runs) != len(sizes):
        problems.append("stts and stsz count different samples")
    if wrong := outside(table, media):
        problems.append(f"{wrong} samples outside mdat")
    if head[3] & 1 == 0 and track.one(b"mdia", b"hdlr").data[8:12] != b"sbtl":
        problems.append("a track is not enabled")
    coded = sum(count * step for count, step in runs)
    if abs(coded - duration) / scale > TOLERATED:
        problems.append(f"mdhd says {duration / scale:.2f} s, stts {coded / scale:.2f} s")
    kind = track.one(b"mdia", b"hdlr").data[8:12].decode()
    return Track(
        kind,
        scale,
        duration / scale,
        (width / 65536, height / 65536),
        shown_for / movie_scale,
        read_edits(track),
        len(sizes),
        coded / scale,
        table.one(b"stsd").data[8:],
        problems,
    )


@dataclass
class Mp4:
    duration: float
    scale: int
    tracks: list[Track]
    problems: list[str]

    def of(self, kind: str) -> list[Track]:
        return [track for track in self.tracks if track.kind == kind]


def picture_problems(track: Track) -> list[str]:
    problems = []
    width, height = struct.unpack_from(">HH", track.entry, 32)
    if track.shown != (width, height):
        problems.append(f"stored {width}x{height}, shown {track.shown}")
    at = track.entry.find(b"avcC")
    if track.entry[4:8] != b"avc1" or at < 0:
        return [*problems, f"picture in {track.entry[4:8]!r}"]
    _, profile, constraints, level = track.entry[at + 4 : at + 8]
    if profile != 66 or not constraints & 0x40:
        problems.append(f"profile {profile}, constraints {constraints:02x}")
    if level > 51:
        problems.append(f"level {level}")
    return problems


def sound_problems(track: Track) -> list[str]:
    channels, _, _, _, rate = struct.unpack_from(">HHHHI", track.entry, 24)
    if track.entry[4:8] != b"mp4a" or channels != 2 or rate >> 16 != 44100:
        return [f"sound in {track.entry[4:8]!r}, {channels} channels, {rate >> 16} Hz"]
    at = track.entry.find(b"\x05\x80\x80\x80")
    kind = track.entry[at + 5] >> 3 if at >= 0 else None
    return [] if kind == 2 else [f"AAC object type {kind}"]


def edit_problems(movie: Mp4, track: Track) -> list[str]:
    shown = sum(length for length, _ in track.edits) / movie.scale
    problems = []
    if track.edits and abs(shown - track.shown_for) > TOLERATED:
        problems.append(f"{track.kind}: edits last {shown:.2f} s, tkhd {track.shown_for:.2f} s")
    if track.shown_for > movie.duration + TOLERATED:
        problems.append(f"{track.kind}: shown for longer than the movie")
    if sum(start == -1 for _, start in track.edits) > 1:
        problems.append(f"{track.kind}: several empty edits")
    for length, start in track.edits:
        if start >= 0 and start / track.scale + length / movie.scale > track.duration + TOLERATED:
            problems.append(f"{track.kind}: an edit reaches beyond the media")
    return problems


def read_mp4(path: Path) -> Mp4:
    boxes = read_boxes(path.read_bytes())
    file = Box(b"file", 0, b"", boxes)
    problems = []
    if boxes[0].name != b"ftyp" or boxes[0].data[:4] not in (b"M4V ", b"mp42", b"isom"):
        problems.append(f"begins with {boxes[0].name!r} {boxes[0].data[:4]!r}")
    media = [(box.start + 8, box.start + 16 + len(box.data)) for box in file.all(b"mdat")]
    moov = file.one(b"moov")
    scale, duration = timed(moov.one(b"mvhd").data, 12)
    tracks = [read_track(track, scale, media) for track in moov.all(b"trak")]
    movie = Mp4(duration / scale, scale, tracks, problems)
    if len(movie.of("vide")) != 1 or len(movie.of("soun")) > 1:
        problems.append(f"tracks {[track.kind for track in tracks]}")
    for track in tracks:
        problems += track.problems + edit_problems(movie, track)
    for track in movie.of("vide"):
        problems += picture_problems(track)
    for track in movie.of("soun"):
        problems += sound_problems(track)
    longest = max((track.shown_for for track in tracks), default=0)
    if abs(longest - movie.duration) > TOLERATED:
        problems.append(f"mvhd says {movie.duration:.2f} s, the longest track {longest:.2f} s")
    return movie
