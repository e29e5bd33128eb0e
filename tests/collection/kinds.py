"""What a kind of movie is, and how one is made."""

import os
import subprocess
from collections.abc import Callable
from dataclasses import dataclass, field
from pathlib import Path

from judge import Wanted
from pattern import Pattern, write_pictures, write_sound

DEADLINE = 120
FF = "ffmpeg -nostdin -v error -y"
IN = f"{FF} -i $Y -i $W"
GST = "gst-launch-1.0 -q -e"
MENCODER = "mencoder -really-quiet -noskip -mc 0 $Y -audiofile $W"
SURGERY = f"/usr/bin/python3 -B {Path(__file__).with_name('surgery.py')}"
# GStreamer elements that read the pattern.
Y4M = "filesrc location=$Y ! y4mdec"
WAV = "filesrc location=$W ! wavparse ! audioconvert ! audioresample"


@dataclass
class Kind:
    """`make` is a shell command with $Y and $W (the pattern's pictures and audio), $D (a folder for
    intermediate files) and $O (the movie); `surgery` changes the movie's bytes after that."""

    name: str
    maker: str
    make: str
    pattern: Pattern = field(default_factory=Pattern)
    wanted: Wanted = field(default_factory=Wanted)
    surgery: Callable[[bytes], bytes] | None = None

    def build(self, folder: Path) -> Path:
        pictures, sound = folder / "pattern.y4m", folder / "pattern.wav"
        write_pictures(self.pattern, pictures)
        write_sound(self.pattern, sound)
        between = folder / "between"
        between.mkdir()
        movie = (folder / "made").with_suffix(Path(self.name).suffix)
        names = {"Y": pictures, "W": sound, "D": between, "O": movie}
        done = subprocess.run(
            ["sh", "-c", self.make],
            env=os.environ | {name: str(path) for name, path in names.items()},
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            timeout=DEADLINE,
            check=False,
        )
        if done.returncode != 0 or not movie.exists() or movie.stat().st_size == 0:
            raise RuntimeError(done.stdout.decode("utf-8", "replace")[-600:])
        if self.surgery:
            movie.write_bytes(self.surgery(movie.read_bytes()))
        (folder / "movies").mkdir()
        return movie.rename(folder / "movies" / self.name)
