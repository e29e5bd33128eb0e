"""Makes sample movies, and describes MP4 files."""

import json
import subprocess
from fractions import Fraction
from pathlib import Path

SUBTITLES = """\
1
00:00:00,500 --> 00:00:01,500
Été – first line

2
00:00:01,600 --> 00:00:01,900
Second line
"""


def ffmpeg(*arguments: object) -> None:
    subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-y", *map(str, arguments)], check=True)


def make_movie(
    path: Path, seconds: float, *, size: str = "320x240", rate: str = "25", grain: int = 0
) -> Path:
    """Makes an H.264 and AAC movie with a moving picture and a tone; grain (0 to 100) makes its
    conversion slow."""
    ffmpeg(
        *("-f", "lavfi", "-i", f"testsrc2=size={size}:rate={rate},noise=alls={grain}:allf=t"),
        *("-f", "lavfi", "-i", "sine=frequency=330:sample_rate=48000"),
        *("-t", seconds, "-c:v", "libx264", "-preset", "ultrafast", "-crf", 28, "-c:a", "aac"),
        *("-f", "matroska", f"file:{path}"),
    )
    return path


def make_long_movie(path: Path) -> Path:
    """Makes a movie of four minutes; `unhurried_ffmpeg` takes half a minute for its conversion."""
    part = make_movie(path.with_suffix(".part"), 10, rate="24000/1001")
    ffmpeg("-stream_loop", 23, "-i", part, "-c", "copy", "-f", "matroska", path)
    part.unlink()
    return path


def unhurried_ffmpeg(folder: Path) -> Path:
    """Writes a program that is the system's ffmpeg, but reads eight seconds of a movie a second: a
    long conversion leaves the processor to other tests."""
    program = folder / "unhurried"
    program.write_text('#!/bin/sh\nexec ffmpeg -readrate 8 "$@"\n')
    program.chmod(0o755)
    return program


def describe(path: Path) -> str:
    """One line about an MP4 file: video, size, frame rate, duration, audio and subtitle track."""
    probe = subprocess.run(
        ["ffprobe", "-v", "error", "-show_streams", "-show_format", "-of", "json", f"file:{path}"],
        check=True,
        stdout=subprocess.PIPE,
    )
    facts = json.loads(probe.stdout)
    streams = {stream["codec_type"]: stream for stream in facts["streams"]}
    parts = []
    if video := streams.get("video"):
        parts += [
            f"{video['codec_name']} {video['profile']} level {video['level']} {video['pix_fmt']}",
            f"{video['width']}x{video['height']}",
            f"{float(Fraction(video['avg_frame_rate'])):.2f} fps",
        ]
    parts.append(f"{float(facts['format']['duration']):.0f} s")
    if audio := streams.get("audio"):
        parts.append(
            f"{audio['codec_name']} {audio['profile']} {audio['sample_rate']} Hz"
            f" {audio['channel_layout']}"
        )
    if subtitle := streams.get("subtitle"):
        parts.append(f"{subtitle['codec_name']} ({subtitle['codec_tag_string']}) subtitles")
    else:
        parts.append("no subtitles")
    return ", ".join(parts)
