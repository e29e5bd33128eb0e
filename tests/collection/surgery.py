"""Changes to a movie's bytes that no available tool makes."""

import struct
import sys
import zlib
from pathlib import Path

SPHERICAL = bytes.fromhex("ffcc8263f8554a938814587a02521fdd")


def box(name: bytes, *parts: bytes) -> bytes:
    body = b"".join(parts)
    return struct.pack(">I4s", 8 + len(body), name) + body


def split(data: bytes) -> list[tuple[bytes, bytes]]:
    """Names and contents of consecutive boxes."""
    boxes, at = [], 0
    while at + 8 <= len(data):
        size, name = struct.unpack_from(">I4s", data, at)
        boxes.append((name, data[at + 8 : at + size]))
        at += size
    return boxes


def join(boxes: list[tuple[bytes, bytes]]) -> bytes:
    return b"".join(box(name, data) for name, data in boxes)


def change(data: bytes, path: list[bytes], do) -> bytes:
    """The boxes with `do` applied to the content of those at the path."""
    return join(
        [
            (
                name,
                (do(body) if len(path) == 1 else change(body, path[1:], do))
                if name == path[0]
                else body,
            )
            for name, body in split(data)
        ]
    )


def movie_end(data: bytes, do) -> bytes:
    """Changes "moov", which must be the last box, so that the media data does not move."""
    assert split(data)[-1][0] == b"moov", [name for name, _ in split(data)]
    return change(data, [b"moov"], do)


def is_kind(track: bytes, kind: bytes) -> bool:
    media = dict(split(dict(split(track))[b"mdia"]))
    return media[b"hdlr"][8:12] == kind


def change_tracks(kind: bytes, path: list[bytes], do):
    """The boxes at the path in the tracks of one kind, from the content of "moov"."""

    def changed(moov: bytes) -> bytes:
        return join(
            [
                (name, change(body, path, do) if name == b"trak" and is_kind(body, kind) else body)
                for name, body in split(moov)
            ]
        )

    return changed


def add_telemetry(data: bytes) -> bytes:
    """A camera's telemetry track, made from the audio packets."""
    entry = box(b"gpmd", bytes(6), b"\0\1")
    replaced = [
        ([b"mdia", b"hdlr"], lambda body: body[:8] + b"meta" + bytes(12) + b"GoPro MET\0"),
        ([b"mdia", b"minf", b"stbl", b"stsd"], lambda body: bytes(7) + b"\1" + entry),
        ([b"tkhd"], lambda body: body[:12] + struct.pack(">I", 9) + body[16:]),
    ]

    def with_track(moov: bytes) -> bytes:
        sound = next(b for name, b in split(moov) if name == b"trak" and is_kind(b, b"soun"))
        for path, do in replaced:
            sound = change(sound, path, do)
        return moov + box(b"trak", sound)

    return movie_end(data, with_track)


def make_spherical(data: bytes) -> bytes:
    words = (
        b'<?xml version="1.0"?><rdf:SphericalVideo xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syn'
        b'tax-ns#" xmlns:GSpherical="http://ns.google.com/videos/1.0/spherical/"><GSpherical:Sphe'
        b"rical>true</GSpherical:Spherical><GSpherical:Stitched>true</GSpherical:Stitched><GSpher"
        b"ical:ProjectionType>equirectangular</GSpherical:ProjectionType></rdf:SphericalVideo>"
    )
    add = change_tracks(b"vide", [b"mdia"], lambda body: body)

    def with_uuid(moov: bytes) -> bytes:
        return join(
            [
                (
                    name,
                    body + box(b"uuid", SPHERICAL, words)
                    if name == b"trak" and is_kind(body, b"vide")
                    else body,
                )
                for name, body in split(add(moov))
            ]
        )

    return movie_end(data, with_uuid)


def in_picture_entry(do):
    """Changes the first entry in the "stsd" of the picture: its name and what follows."""

    def changed(stsd: bytes) -> bytes:
        ((name, body),) = split(stsd[8:])
        return stsd[:8] + box(*do(name, body))

    return change_tracks(b"vide", [b"mdia", b"minf", b"stbl", b"stsd"], changed)


def label_dolby_vision(data: bytes) -> bytes:
    """Profile 8.4: an ordinary picture with enhancement data."""
    label = box(b"dvvC", bytes([1, 0, 8 << 1, 0b00001101, 0x40]), bytes(19))
    return movie_end(data, in_picture_entry(lambda name, body: (name, body + label)))


def crop_picture(data: bytes) -> bytes:
    """A clean aperture without the eight rows on top."""
    return movie_end(
        data,
        in_picture_entry(
            lambda name, body: (
                name,
                body + box(b"clap", struct.pack(">8I", 160, 1, 112, 1, 0, 1, 4, 1)),
            )
        ),
    )


def show_wide(data: bytes) -> bytes:
    """Only the track's size says that a narrow picture is 4:3."""

    def wide(body: bytes) -> bytes:
        return body[:-8] + struct.pack(">II", 320 << 16, 240 << 16)

    return movie_end(data, change_tracks(b"vide", [b"tkhd"], wide))


def call_protected(data: bytes) -> bytes:
    """The picture's codec name as a shop's protection sets it."""
    return movie_end(data, in_picture_entry(lambda name, body: (b"drmi", body)))


def call_outside(data: bytes) -> bytes:
    """The index refers to another file for the media, which does not exist."""
    body = bytes(7) + b"\1" + box(b"url ", bytes(4), b"file:///elsewhere/movie.mov\0")
    path = [b"mdia", b"minf", b"dinf", b"dref"]
    return movie_end(data, change_tracks(b"vide", path, lambda _: body))


def two_edits(data: bytes) -> bytes:
    """Seconds 2 to 3 first, then 0 to 1, of picture and audio."""

    def edits(scale: int):
        values = struct.pack(">II", 0, 2)
        for start in (2, 0):
            values += struct.pack(">IiI", 1000, start * scale, 1 << 16)
        return lambda _: values

    def changed(moov: bytes) -> bytes:
        moov = change_tracks(b"vide", [b"edts", b"elst"], edits(12800))(moov)
        return change_tracks(b"soun", [b"edts", b"elst"], edits(48000))(moov)

    return movie_end(data, changed)


def compress_index(data: bytes) -> bytes:
    """ "moov" as old QuickTime compresses it."""

    def deflated(moov: bytes) -> bytes:
        whole = box(b"moov", moov)
        size = struct.pack(">I", len(whole))
        return box(b"cmov", box(b"dcom", b"zlib"), box(b"cmvd", size, zlib.compress(whole)))

    return movie_end(data, deflated)


def open_mdat(data: bytes) -> bytes:
    """The media data at the end without a size, as from a camera that writes its index first."""
    at = data.rindex(b"mdat", 0, len(data))
    return data[: at - 4] + bytes(4) + data[at:]


def pad_packets(data: bytes) -> bytes:
    return b"".join(data[at : at + 188] + bytes(16) for at in range(0, len(data), 188))


def video_cd_sectors(data: bytes) -> bytes:
    """A program stream in the sectors of a Video CD's file."""
    sectors = b""
    for number, at in enumerate(range(0, len(data), 2324)):
        seconds, frame = divmod(number + 150, 75)
        place = bytes(int(str(value), 16) for value in (seconds // 60, seconds % 60, frame))
        head = b"\0" + b"\xff" * 10 + b"\0" + place + b"\2" + b"\1\1\x62\x0f" * 2
        sectors += head + data[at : at + 2324].ljust(2324, b"\0") + bytes(4)
    form = b"fmt " + struct.pack("<I", 16) + bytes(16)
    body = b"CDXA" + form + b"data" + struct.pack("<I", len(sectors)) + sectors
    return b"RIFF" + struct.pack("<I", len(body)) + body


def chunk(name: bytes, *parts: bytes) -> bytes:
    body = b"".join(parts)
    return name + struct.pack("<I", len(body)) + body + b"\0" * (len(body) % 2)


def dv_type_1(data: bytes) -> bytes:
    """PAL DV as one stream of picture and audio, as early camera software wrote it."""
    frames = [data[at : at + 144000] for at in range(0, len(data), 144000)]
    main = struct.pack(
        "<14I", 40000, 3600000, 0, 0x810, len(frames), 0, 1, 144000, 720, 576, 0, 0, 0, 0
    )
    head = b"iavsdvsd" + struct.pack("<10I", 0, 0, 0, 1, 25, 0, len(frames), 144000, 10000, 0)
    head += struct.pack("<4H", 0, 0, 720, 576)
    listed = chunk(
        b"LIST",
        b"hdrl",
        chunk(b"avih", main),
        chunk(b"LIST", b"strl", chunk(b"strh", head), chunk(b"strf", bytes(32))),
    )
    index, at = b"", 4
    for _ in frames:
        index += b"00__" + struct.pack("<III", 0x10, at, 144000)
        at += 144008
    movi = chunk(b"LIST", b"movi", *(chunk(b"00__", frame) for frame in frames))
    return chunk(b"RIFF", b"AVI ", listed, movi, chunk(b"idx1", index))


def without_aspect(data: bytes) -> bytes:
    """Without "pasp"; the caller handles other information on the shape."""
    bare = in_picture_entry(
        lambda name, body: (
            name,
            body[:78] + join([part for part in split(body[78:]) if part[0] != b"pasp"]),
        )
    )
    return movie_end(data, bare)


def with_matrix(data: bytes, *values: float) -> bytes:
    """The matrix a, b, c, d, x, y of the picture's track."""
    a, b, c, d, x, y = (round(value * 65536) for value in values)
    matrix = struct.pack(">9i", a, b, 0, c, d, 0, x, y, 1 << 30)
    return movie_end(
        data, change_tracks(b"vide", [b"tkhd"], lambda body: body[:40] + matrix + body[76:])
    )


def stretch(data: bytes) -> bytes:
    """Shown twice as wide as the track's size says, which is the stored one."""

    def stored(body: bytes) -> bytes:
        return body[:-8] + struct.pack(">II", 80 << 16, 120 << 16)

    sized = movie_end(data, change_tracks(b"vide", [b"tkhd"], stored))
    return with_matrix(sized, 2, 0, 0, 1, 0, 0)


def mirror(data: bytes) -> bytes:
    return with_matrix(data, -1, 0, 0, 1, 160, 0)


def pull_down(data: bytes) -> bytes:
    """MPEG-2 of 24 frames a second without B-frames, flagged as on DVDs: shown in 59.94 fields,
    three and two per frame in turn."""
    cycle = [(1, 1), (0, 0), (0, 1), (1, 0)]
    stream, at, number = bytearray(data), 0, 0
    while (at := stream.find(b"\0\0\1", at)) >= 0 and at + 9 < len(stream):
        code, kind = stream[at + 3], stream[at + 4] >> 4
        if code == 0xB3:
            stream[at + 7] = stream[at + 7] & 0xF0 | 4
        elif code == 0xB5 and kind == 1:
            stream[at + 5] &= ~0x08
        elif code == 0xB5 and kind == 8:
            first, again = cycle[number % 4]
            stream[at + 7] = stream[at + 7] & 0x7D | first << 7 | again << 1
            number += 1
        at += 3
    return bytes(stream)


if __name__ == "__main__":
    name, source, target = sys.argv[1:]
    Path(target).write_bytes(globals()[name](Path(source).read_bytes()))
