"""The repository and the build that the packaging tests inspect."""

import os
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["VANTREO_BUILD"])
VERSION = os.environ["VANTREO_VERSION"]


def output_of(*command: object, cwd: Path | None = None) -> str:
    """The output of a command; raises with the output if it fails."""
    run = subprocess.run(
        [*map(str, command)], cwd=cwd, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT
    )
    if run.returncode:
        raise AssertionError(f"{command} ended with status {run.returncode}:\n{run.stdout}")
    return run.stdout
