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
from secure_boot_journey import check_secure_boot, end
from vm import SECURE, Disk, Machine, Options
from window import MessageBox, Panel, Window


def unlock(machine: Machine) -> None:
    """Types the password where the session asks for it."""
    machine.wait_line(r"asks password .*")
    Panel(machine, "the question for the password")
    machine.shoot("password")
    machine.type(guestdisks.PASSWORD)
    machine.shoot("password-typed")
    machine.press("ret")


def tick_all(machine: Machine, window: Window, names: list[str]) -> None:
    """Ticks every volume of the tree."""
    picture = machine.shoot("volumes")
    check(window.rows(picture) == len(names), f"the tree shows {window.rows(picture)} volumes instead of {names}")
    for row in range(len(names)):
        window.tick(row)


def interrupted_copy(machine: Machine, window: Window, stick: Path) -> None:
    """Copies to a slow stick, pulls it in the middle, and reads what the window says."""
    machine.plug("stick", Disk(stick, "usb"))
    machine.wait_line(r"volume \S+ ext4 usb -> STICK")
    window.wait("the stick in the window", window.has_disk)
    machine.slow_down("stick", 1_000_000)
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


def second_try(machine: Machine, window: Window, stick: Path, names: list[str]) -> None:
    """Copies all to another stick, whole."""
    before = len(machine.lines())
    machine.plug("other", Disk(stick, "usb"))
    machine.wait_line(r"volume \S+ ext4 usb -> STICK", after=before)
    picture = window.wait("the stick in the window", window.has_disk)
    for row in range(len(names)):
        if not window.has_tick(picture, row):
            window.tick(row)
    window.copy()
    box = MessageBox(machine, "the box at the end", 400)
    machine.shoot("end")
    check(box.is_good(), "the box at the end does not say that all is whole")
    box.press(0)
    window.leave()


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
    options = Options(firmware=SECURE, disks=[Disk(path, bus) for path, bus in zip(inner, buses)])
    with bed.machine(options) as machine:
        machine.wait_line(r"copied \d+ KiB to memory")
        machine.pull("boot")
        unlock(machine)
        machine.wait_line("volumes ready")
        machine.wait_line("window")
        check_secure_boot(machine)
        names = shown_names(machine)
        check_none(sorted(filled.wanted.keys() - set(names)), "volumes that were not shown")
        window = Window(machine)
        tick_all(machine, window, names)
        interrupted_copy(machine, window, stick)
        second_try(machine, window, other, names)
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
