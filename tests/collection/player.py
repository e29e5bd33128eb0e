"""Plays an MP4 file with GStreamer's own demultiplexer, openh264 and faad: pictures and audio with
their times, without ffmpeg's libraries."""

from dataclasses import dataclass, field
from pathlib import Path

import gi
import numpy

gi.require_version("Gst", "1.0")
gi.require_version("GstApp", "1.0")
from gi.repository import Gst, GstApp  # noqa: E402, F401

Gst.init(None)

PICTURE = (
    "d.video_0 ! queue max-size-time=0 max-size-bytes=0 max-size-buffers=0 ! h264parse ! "
    "openh264dec ! videoconvert ! video/x-raw,format=RGB ! appsink name=picture sync=false"
)
SOUND = (
    "d.audio_0 ! queue max-size-time=0 max-size-bytes=0 max-size-buffers=0 ! aacparse ! faad ! "
    "audioconvert ! audio/x-raw,format=F32LE,layout=interleaved ! appsink name=sound sync=false"
)
# faad outputs nothing for its first packet, and gives its time to the second one.
SWALLOWED = 1024
DEADLINE = 15 * Gst.SECOND


@dataclass
class Played:
    """Frames as (time, RGB array), audio as samples by channels with the time of the first."""

    frames: list = field(default_factory=list)
    sound: numpy.ndarray | None = None
    sound_starts: float = 0
    sound_rate: int = 0
    sound_gap: float = 0
    error: str = ""


def samples_of(sink: object):
    while sample := sink.try_pull_sample(DEADLINE):
        buffer = sample.get_buffer()
        ran = sample.get_segment().to_running_time(Gst.Format.TIME, buffer.pts)
        if ran == Gst.CLOCK_TIME_NONE:
            continue
        yield ran / Gst.SECOND, sample.get_caps().get_structure(0), buffer


def read_pictures(sink: object, played: Played, look) -> None:
    for time, caps, buffer in samples_of(sink):
        width, height = caps.get_value("width"), caps.get_value("height")
        data = numpy.frombuffer(buffer.extract_dup(0, buffer.get_size()), numpy.uint8)
        rows = data.reshape(height, -1)[:, : width * 3]
        played.frames.append((time, look(rows.reshape(height, width, 3))))


def read_sound(sink: object, played: Played) -> None:
    pieces, ends = [], None
    for time, caps, buffer in samples_of(sink):
        channels, played.sound_rate = caps.get_value("channels"), caps.get_value("rate")
        data = numpy.frombuffer(buffer.extract_dup(0, buffer.get_size()), numpy.float32)
        piece = data.reshape(-1, channels)
        if ends is None:
            played.sound_starts = time + SWALLOWED / played.sound_rate
        else:
            played.sound_gap = max(played.sound_gap, abs(time - ends))
        ends = time + len(piece) / played.sound_rate
        pieces.append(piece)
    played.sound = numpy.concatenate(pieces) if pieces else None


def play(path: Path, has_sound: bool, look) -> Played:
    """Plays the file; keeps only the result of `look` for each picture."""
    played = Played()
    words = f"filesrc name=source ! qtdemux name=d {PICTURE} {SOUND if has_sound else ''}"
    pipeline = Gst.parse_launch(words)
    pipeline.get_by_name("source").set_property("location", str(path))
    pipeline.set_state(Gst.State.PLAYING)
    read_pictures(pipeline.get_by_name("picture"), played, look)
    if has_sound:
        read_sound(pipeline.get_by_name("sound"), played)
    message = pipeline.get_bus().pop_filtered(Gst.MessageType.ERROR)
    if message:
        played.error = message.parse_error()[0].message
    pipeline.set_state(Gst.State.NULL)
    return played
