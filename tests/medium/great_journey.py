#!/usr/bin/env python3
"""Every kind of volume, a password, a boot stick that is pulled, a target that is pulled in mid-copy, a second try.

At the end the stick holds what the volumes held, byte for byte, and no inner disk has changed.
"""

from __future__ import annotations

from pathlib import Path

import disks
import guestdisks
from compare import Seal, differences, manifest_of
from journey import Bed, check, check_none, main, need
from steps import choose_language, copy, end, plug_stick, tick_all, unlock
from vm import BIOS, Disk, Failure, Machine, Options
from window import MessageBox, Window

GERMAN = 1


def interrupted_copy(machine: Machine, window: Window, stick: Path) -> None:
    """Copies to a slow stick, pulls it in the middle, and reads what the window says."""
    plug_stick(machine, window, stick)
    machine.slow_down("stick", 500_000)
    window.copy()
    window.wait("the bar on its way", lambda picture: window.is_copy_page(picture) and window.bar(picture) > 20)
    machine.shoot("half-way")
    machine.pull("stick")
    box = MessageBox(machine, "the box that says that the stick is gone")
    machine.shoot("stick-pulled")
    check(not box.is_good(), "the box says that all is well although the stick was pulled")
    machine.wait_line(r"gone STICK")
    box.press(0)
    window.wait("the first page", lambda picture: not window.is_copy_page(picture) and not window.has_disk(picture))


def second_try(machine: Machine, window: Window, stick: Path, volumes: int) -> None:
    """Copies all to another stick, whole."""
    plug_stick(machine, window, stick, "other")
    picture = machine.shoot("second-stick")
    for row in range(volumes):
        if not window.has_tick(picture, row):
            window.tick(row)
    copy(machine, window)


def first_window(machine: Machine) -> None:
    """Waits for the window, which nothing comes before: no volume is missing."""
    if "missing" in machine.wait_line(r"(asks missing .*|window)").group(0):
        machine.shoot("missing")
        raise Failure(f"missing: {machine.shell('cat /run/tarnwick/missing')}")


def shown_names(machine: Machine) -> list[str]:
    """The volumes to rescue from that the session has shown so far."""
    lines = (line for line in machine.lines() if line.startswith("tarnwick: volume ") and " usb " not in line)
    return sorted({line.split(" -> ", 1)[1] for line in lines})


def story(bed: Bed) -> None:
    filled = guestdisks.make(bed)
    inner = [filled.solid, filled.second, filled.mac, filled.locked]
    stick, other = (disks.stick(bed.work / name, "STICK", 700, "ext4") for name in ("stick.img", "other.img"))
    seal = Seal(inner)
    buses = ("nvme", "sata", "sata", "sata")
    options = Options(firmware=BIOS, disks=[Disk(path, bus) for path, bus in zip(inner, buses)])
    with bed.machine(options) as machine:
        choose_language(machine, GERMAN)
        machine.wait_line(r"copied \d+ KiB to memory")
        machine.pull("boot")
        machine.wait_line("note language de, keyboard de")
        unlock(machine, guestdisks.PASSWORD)
        machine.wait_line("volumes ready")
        first_window(machine)
        names = shown_names(machine)
        check_none(sorted(filled.wanted.keys() - set(names)), "volumes that were not shown")
        window = Window(machine)
        tick_all(machine, window, len(names))
        interrupted_copy(machine, window, stick)
        second_try(machine, window, other, len(names))
        end(machine)
    check_none(seal.broken(), "a disk that was only to be read")
    rescue = disks.rescues(disks.read_stick(other, bed.work / "read", "ext4"))
    check(len(rescue) == 1, f"{len(rescue)} rescues on the second stick")
    wanted = {path: entry for files in filled.wanted.values() for path, entry in files.items()}
    check_none(differences(wanted, manifest_of(rescue[0])), "the stick is not what was rescued")
    print(f"{len(wanted)} files of {len(names)} volumes arrived, byte for byte")
    if not filled.apfs_has_files:
        print("the APFS was empty: its driver could not be built")


if __name__ == "__main__":
    need("mke2fs", "debugfs", "mkntfs", "ntfscp", "sfdisk", "mkfs.btrfs", "mkfs.xfs", "mkapfs", "xorriso", "apt-get")
    main("great_journey", story)
