#!/usr/bin/env python3
"""A language chosen in the menu: language.py de|ja

A person of that language waits, unlocks a disk with a password that is typed on that language's
keyboard, is told which disk is damaged, and sees the window.
"""

from __future__ import annotations

import sys
from dataclasses import dataclass
from pathlib import Path

import disks
from journey import Bed, check, main, need
from steps import choose_language, unlock
from vm import BIOS, Disk, Machine, Options
from window import Panel, Window

PASSWORD = "zart"


@dataclass(frozen=True)
class Language:
    """Its line in the menu, its keyboard, and the keys (by their American names) that write the password there."""

    line: int
    keyboard: str
    keys: str


LANGUAGES = {"de": Language(1, "de", "yart"), "ja": Language(7, "jp", "zart")}


def locked_disk(path: Path) -> Path:
    """A disk with a LUKS 2 that has nothing in it."""
    options = ["--batch-mode", "--type", "luks2", "--label", "Geheim", "--pbkdf", "pbkdf2"]
    options += ["--pbkdf-force-iterations", "1000", "--key-file", "-"]
    disks.run("cryptsetup", "luksFormat", *options, disks.blank(path, 32), stdin=PASSWORD.encode())
    return path


def lost_disk(bed: Bed) -> Path:
    """A disk with a partition of Windows whose file system is gone."""
    return disks.whole_disk(bed.work / "lost.img", [(disks.blank(bed.work / "part", 80), disks.WINDOWS)])


def story(bed: Bed) -> None:
    code = sys.argv[1]
    language = LANGUAGES[code]
    files = disks.write_folder(bed.work / "files", disks.user_files(5, photos=1))
    inner = disks.whole_disk(bed.work / "inner.img", [(disks.ext4(bed.work / "e", "Linux", files), disks.LINUX)])
    locked = locked_disk(bed.work / "locked.img")
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner), Disk(locked), Disk(lost_disk(bed))])) as machine:
        choose_language(machine, language.line)
        machine.wait_line(f"note language {code}, keyboard {language.keyboard}")
        Panel(machine, "the picture while disks are looked for")
        machine.shoot("wait")
        unlock(machine, language.keys)
        # What the password has opened.
        machine.wait_line(r"not shown /dev/dm-\d+ unknown: no file system was recognised")
        machine.wait_line("asks missing 1")
        Panel(machine, "the list of what is not shown")
        machine.shoot("missing")
        machine.press("ret")
        machine.wait_line("window")
        window = Window(machine)
        check(window.rows(machine.shoot("window")) == 1, "the tree does not show the one volume")


if __name__ == "__main__":
    need("mke2fs", "sfdisk", "cryptsetup")
    main(f"language_{sys.argv[1]}", story)
