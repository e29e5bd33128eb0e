"""Makes teletext subtitles (ETSI EN 300 706, in a transport stream as in EN 300 472)."""

import struct
from pathlib import Path

PACKET = 188
PMT = 0x1000
PICTURE = 0x100
TEXT = 0x200
HAMMING = bytes.fromhex("15 02 49 5e 64 73 38 2f d0 c7 8c 9b a1 b6 fd ea")
Event = tuple[float, str]


def _reversed(byte: int) -> int:
    return int(f"{byte:08b}"[::-1], 2)


def _odd(text: bytes) -> bytes:
    return bytes(c if c.bit_count() % 2 else c | 0x80 for c in text)


def _line(row: int, data: bytes) -> bytes:
    """A line of magazine 8 as a data unit."""
    line = bytes((HAMMING[(row & 1) << 3], HAMMING[row >> 1])) + data
    return b"\x03\x2c\xe7\xe4" + bytes(map(_reversed, line))


def _header(page: int) -> bytes:
    """Erases the page; marks it as subtitles and suppresses the header."""
    digits = (page & 15, page >> 4, 0, 8, 0, 8, 1, 1)
    return _line(0, bytes(HAMMING[digit] for digit in digits) + _odd(b" " * 32))


def _page(text: str) -> bytes:
    """Page 888 in three lines, up to the next header, which ends it."""
    boxed = (b"\x0d\x0b\x0b" + text.encode() + b"\x0a\x0a").center(40)
    line = _line(20, _odd(boxed)) if text else b"\xff\x2c" + b"\xff" * 44
    return _header(0x88) + line + _header(0xFF)


def _pes(time: float, units: bytes) -> bytes:
    pts = round(time * 90_000)
    stamp = bytes([0x21 | pts >> 29 & 14])
    stamp += struct.pack(">HH", pts >> 14 & 0xFFFE | 1, pts << 1 & 0xFFFE | 1)
    body = b"\x84\x80\x24" + stamp.ljust(0x24, b"\xff") + b"\x10" + units
    return b"\0\0\1\xbd" + struct.pack(">H", len(body)) + body


def _packet(count: int, pes: bytes) -> bytes:
    """A transport packet with a whole PES packet."""
    assert len(pes) == PACKET - 4, len(pes)
    return bytes((0x47, 0x40 | TEXT >> 8, TEXT & 255, 0x10 | count & 15)) + pes


def _checksum(data: bytes) -> bytes:
    value = 0xFFFFFFFF
    for byte in data:
        value ^= byte << 24
        for _ in range(8):
            value = (value << 1 ^ (0x04C11DB7 if value >> 31 else 0)) & 0xFFFFFFFF
    return value.to_bytes(4, "big")


def _with_text(table: bytes) -> bytes:
    """The program map table's packet with a teletext stream added, in German on page 888."""
    length = int.from_bytes(table[6:8], "big") & 0xFFF
    section = table[5 : 8 + length - 4] + b"\x06\xe2\x00\xf0\x07\x56\x05ger\x10\x88"
    section = section[:1] + struct.pack(">H", 0xB000 | len(section) + 1) + section[3:]
    return (table[:5] + section + _checksum(section)).ljust(PACKET, b"\xff")


def _time_of(packet: bytes) -> float | None:
    """The presentation time of the picture that starts in the packet."""
    at = 4 + (1 + packet[4] if packet[3] & 0x20 else 0)
    if not packet[1] & 0x40 or not packet[at + 7] & 0x80:
        return None
    a, b, c, d, e = packet[at + 9 : at + 14]
    return ((a >> 1 & 7) << 30 | b << 22 | c >> 1 << 15 | d << 7 | e >> 1) / 90_000


def add_teletext(movie: Path, start: float, events: list[Event]) -> None:
    """Adds a teletext stream to a transport stream of ffmpeg's whose clock starts at `start`, with
    a text, or none, at each time in seconds."""
    data = movie.read_bytes()
    result, waiting, count = b"", list(events), 0
    for at in range(0, len(data), PACKET):
        packet = data[at : at + PACKET]
        stream = (packet[1] & 31) << 8 | packet[2]
        time = _time_of(packet) if stream == PICTURE else None
        while time is not None and waiting and waiting[0][0] + start <= time:
            moment, text = waiting.pop(0)
            result += _packet(count, _pes(moment + start, _page(text)))
            count += 1
        result += _with_text(packet) if stream == PMT else packet
    movie.write_bytes(result)
