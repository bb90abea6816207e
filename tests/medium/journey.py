"""What every test of the medium begins and ends with: what it needs, its folders, its exit code."""

from __future__ import annotations

import os
import shutil
import sys
import time
import traceback
from pathlib import Path
from typing import Callable

from vm import SECURE, SKIPPED, Failure, Firmware, Machine, Options


class Bed:
    """The image, the work folder and the pictures of one test."""

    def __init__(self, name: str) -> None:
        build = Path(os.environ.get("TARNWICK_BUILD_DIR", "build/release")).resolve()
        self.name = name
        self.image = find_image(build)
        self.work = build / "medium-tests" / name
        self.pictures = build / "pictures" / "medium" / name
        for folder in (self.work, self.pictures):
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir(parents=True)

    def machine(self, options: Options, name: str = "guest") -> Machine:
        """A computer with the image in its USB port; it begins with `with`."""
        return Machine(name, self.image, options, self.work, self.pictures)


def find_image(build: Path) -> Path:
    """The image of TARNWICK_MEDIUM_IMAGE, the one the tests built, or the newest; it need not exist."""
    named = os.environ.get("TARNWICK_MEDIUM_IMAGE")
    if named:
        return Path(named).resolve()
    built = build.parent / "medium/built"
    if built.exists():
        return Path(built.read_text(encoding="utf-8").splitlines()[2])
    images = sorted((build.parent / "medium").glob("tarnwick-*.img"), key=lambda path: path.stat().st_mtime)
    return images[-1] if images else build.parent / "medium" / "tarnwick.img"


def skip(reason: str) -> None:
    """Ends the test as skipped."""
    print(f"skipped: {reason}")
    sys.exit(SKIPPED)


def need(*tools: str, firmware: Firmware = SECURE, always: bool = False) -> None:
    """Skips the test by name where it is not wanted, or where something that it needs is missing."""
    if not always and os.environ.get("TARNWICK_MEDIUM") != "all":
        skip("takes minutes; TARNWICK_MEDIUM=all runs it, and so does scripts/test --medium")
    path = os.environ["PATH"] + ":/usr/sbin:/sbin"
    for tool in ("qemu-system-x86_64", *tools):
        if not shutil.which(tool, path=path):
            skip(f"{tool} is not installed")
    for file in firmware.files:
        if not file.exists():
            skip(f"the firmware {file} is not installed")


def check(condition: bool, what: str) -> None:
    """Raises Failure with these words unless the condition holds."""
    if not condition:
        raise Failure(what)


def check_none(lines: list[str], what: str) -> None:
    """Raises Failure with all lines when there are any."""
    if lines:
        raise Failure(f"{what}:\n  " + "\n  ".join(lines[:40]))


def main(name: str, story: Callable[[Bed], None]) -> None:
    """Runs a test and ends the process: 0, 1 with what went wrong, 77 when it was skipped."""
    bed = Bed(name)
    if not bed.image.exists():
        skip(f"there is no image {bed.image}; scripts/medium makes it")
    begin = time.monotonic()
    try:
        story(bed)
    except (Failure, RuntimeError) as problem:
        print(f"FAILED: {problem}")
        traceback.print_exc()
        sys.exit(1)
    finally:
        print(f"pictures and logs: {bed.pictures}")
    print(f"passed in {time.monotonic() - begin:.0f} s")
    shutil.rmtree(bed.work, ignore_errors=True)
