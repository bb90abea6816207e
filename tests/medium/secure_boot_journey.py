#!/usr/bin/env python3
"""A rescue from power on to the restart, under Secure Boot, with nothing but the mouse.

The computer has an inner disk with an ext4 that a power cut left with a journal, an NTFS and a
FAT. The stick comes while the window is open. At the end everything is on it, byte for byte,
and the inner disk is what it was.
"""

from __future__ import annotations

from pathlib import Path

import disks
from compare import Manifest, Seal, below, differences
from journey import Bed, check, check_none, main, need
from steps import copy, end, plug_stick, tick_all
from vm import SECURE, Disk, Machine, Options
from window import Window

LATE = {"late letter.txt": b"written a moment before the power went\n" * 90, "last photo.jpg": bytes(range(256)) * 300}


def inner_disk(work: Path) -> tuple[Path, Manifest]:
    """The inner disk, and what has to arrive of it."""
    users, more, roots = disks.user_files(1), disks.user_files(2, photos=2), disks.root_files(3)
    linux = disks.ext4_after_power_cut(work / "linux", "Linux", disks.write_folder(work / "users", users), LATE)
    windows = disks.ntfs(work / "windows", "Windows C", roots)
    backup = disks.fat(work / "backup", "BACKUP", disks.write_folder(work / "more", more))
    parts = [(linux, disks.LINUX), (windows, disks.WINDOWS), (backup, disks.WINDOWS)]
    path = disks.whole_disk(work / "inner.img", parts)
    wanted = below("Linux", disks.manifest({**users, **LATE}))
    wanted |= below("Windows C", disks.manifest(roots)) | below("BACKUP", disks.manifest(more))
    return path, wanted


def check_secure_boot(machine: Machine) -> None:
    """The guest's own word that Secure Boot is on."""
    variables = "/sys/firmware/efi/efivars"
    machine.shell(f"mountpoint -q {variables} || mount -t efivarfs efi {variables}")
    word = machine.shell(f"od -An -tu1 -j4 {variables}/SecureBoot-*").strip()
    check(word == "1", f"Secure Boot is not on: {word}")
    machine.say("the guest says that Secure Boot is on")


def rescue(machine: Machine, stick: Path, volumes: int) -> None:
    """Ticks every volume, takes the stick that comes, copies, and reads the end."""
    window = Window(machine)
    picture = machine.shoot("window")
    check(window.is_complete(picture), "“Complete rescue” is off")
    check(not window.can_copy(picture), "Copy is on without a destination")
    tick_all(machine, window, volumes)
    plug_stick(machine, window, stick)
    machine.shoot("stick")
    window.choose_disk()
    check(window.is_complete(machine.shoot("ready")), "“Complete rescue” went off")
    copy(machine, window)


def story(bed: Bed) -> None:
    inner, wanted = inner_disk(bed.work)
    stick = disks.stick(bed.work / "stick.img", "STICK")
    seal = Seal([inner, bed.image])
    with bed.machine(Options(firmware=SECURE, disks=[Disk(inner, model="INNER")])) as machine:
        machine.wait_line("medium .*")
        machine.wait_line("session")
        machine.wait_line(r"volumes ready")
        machine.wait_line("window")
        check_secure_boot(machine)
        rescue(machine, stick, 3)
        end(machine)
    found = disks.arrived(disks.read_stick(stick, bed.work / "read"))
    check_none(differences(wanted, found), "the stick is not what was rescued")
    check_none(seal.broken(), "a disk that was only to be read")
    print(f"{len(found)} files arrived, byte for byte; the inner disk is untouched")


if __name__ == "__main__":
    need("mke2fs", "debugfs", "mkntfs", "ntfscp", "mformat", "mcopy", "sfdisk", always=True)
    main("secure_boot_journey", story)
