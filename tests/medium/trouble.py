#!/usr/bin/env python3
"""What goes wrong in life, one story each: trouble.py STORY (the names are at the end)

What the window says has to be what is on the stick, and no inner disk may change.
"""

from __future__ import annotations

import sys
from pathlib import Path
from typing import Callable

import disks
from compare import Manifest, Seal, below, differences, manifest_of
from journey import Bed, check, check_none, main, need
from steps import copy, plug_stick
from vm import BIOS, UEFI, Disk, Machine, Options
from window import MessageBox, Panel, Window

# The first answer to what a USB disk is for.
RESCUE_FROM_IT = 0


def inner_disk(bed: Bed, photos: int = 4) -> tuple[Path, Manifest]:
    """A disk with one ext4 "Linux", and what has to arrive of it."""
    files = disks.user_files(21, photos)
    part = disks.ext4(bed.work / "linux", "Linux", disks.write_folder(bed.work / "files", files))
    return disks.whole_disk(bed.work / "inner.img", [(part, disks.LINUX)]), below("Linux", disks.manifest(files))


def ready(machine: Machine, stick: Path, name: str = "stick") -> Window:
    """The window with its one volume ticked and the stick chosen by itself."""
    machine.wait_line("window")
    window = Window(machine)
    window.tick(0)
    plug_stick(machine, window, stick, name)
    return window


def arrived(bed: Bed, stick: Path) -> Manifest:
    """What is on a stick."""
    return disks.arrived(disks.read_stick(stick, bed.work / "read"))


def same_names(bed: Bed) -> None:
    """Two sticks of one name: both are offered, and what is copied lies on the chosen one alone."""
    inner, wanted = inner_disk(bed)
    sticks = [disks.stick(bed.work / f"{name}.img", "STICK") for name in ("one", "two")]
    seal = Seal([inner])
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner)])) as machine:
        window = ready(machine, sticks[0], "one")
        machine.plug("two", Disk(sticks[1], "usb"))
        machine.wait_line(r"volume \S+ vfat usb -> STICK 2")
        window.choose_disk(1)
        machine.shoot("second-stick")
        copy(machine, window)
    found = [disks.rescues(disks.read_stick(stick, bed.work / f"read{n}")) for n, stick in enumerate(sticks)]
    check([len(each) for each in found] == [0, 1], f"the rescue is not on the chosen stick alone: {found}")
    check_none(differences(wanted, arrived(bed, sticks[1])), "the stick is not what was rescued")
    check_none(seal.broken(), "a disk that was only to be read")


def no_stick(bed: Bed) -> None:
    """Without a USB disk nothing can be copied, and the window stays."""
    inner, _ = inner_disk(bed)
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner)])) as machine:
        machine.wait_line("window")
        window = Window(machine)
        window.tick(0)
        picture = machine.shoot("no-stick")
        check(not window.has_disk(picture) and not window.can_copy(picture), "something can be copied to")


def full_stick(bed: Bed) -> None:
    """A stick that is too small is refused before anything is written to it."""
    inner, _ = inner_disk(bed, photos=110)
    stick = disks.stick(bed.work / "stick.img", "STICK", 36)
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner)])) as machine:
        window = ready(machine, stick)
        window.copy()
        box = MessageBox(machine, "the box that says that there is no room")
        machine.shoot("no-room")
        check(not box.is_good(), "the box says that all is well")
        box.press(0)
        window.wait("the first page", lambda picture: window.has_tick(picture, 0))
    check_none(disks.list_fat(stick), "the full stick was written to")


def bad_sectors(bed: Bed) -> None:
    """A photo with sectors that cannot be read: named, at its full length, and all the others whole."""
    inner, wanted = inner_disk(bed)
    name = "Users/anna/Pictures/IMG_0002.jpg"
    begin = inner.read_bytes().index(disks.user_files(21)[name][:4096])
    bad = tuple(range(begin // 512 + 64, begin // 512 + 72))
    stick = disks.stick(bed.work / "stick.img", "STICK")
    seal = Seal([inner])
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner, bad_sectors=bad)])) as machine:
        window = ready(machine, stick)
        copy(machine, window, good=False)
    found = arrived(bed, stick)
    others = [line for line in differences(wanted, found) if line != f"other bytes: Linux/{name}"]
    check_none(others, "more is not whole")
    check(f"Linux/{name}" in found, "the photo with bad sectors is missing")
    reports = [path.read_text(errors="replace") for path in (bed.work / "read").glob("Tarnwick*.txt")]
    check(any("IMG_0002.jpg" in text for text in reports), "no report on the stick names the photo")
    check_none(seal.broken(), "a disk that was only to be read")


def disk_hangs(bed: Bed) -> None:
    """A disk that answers nothing any more: the window goes on answering, and the copy can be stopped."""
    inner, _ = inner_disk(bed, photos=60)
    stick = disks.stick(bed.work / "stick.img", "STICK")
    seal = Seal([inner])
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner)])) as machine:
        window = ready(machine, stick)
        # After a time the kernel would reset the controller, and with it QEMU stops until the disk answers.
        machine.shell("for file in /sys/block/sd*/device/timeout; do echo 100000 >$file; done")
        machine.slow_down("disk0", 2_000_000)
        window.copy()
        window.wait("the bar on its way", lambda picture: window.is_copy_page(picture) and window.bar(picture) > 20)
        machine.slow_down("disk0", 1)
        machine.shoot("hangs")
        window.leave()
        machine.wait_line("program ended .*", 200)
        machine.wait_line(r"asks end.*", 200)
        Panel(machine, "the question at the end")
        machine.shoot("after-the-end")
        machine.slow_down("disk0", 0)
    check_none(seal.broken(), "a disk that was only to be read")


def little_memory(bed: Bed) -> None:
    """With 700 MB the medium is read while it runs, and a rescue is whole all the same."""
    inner, wanted = inner_disk(bed)
    stick = disks.stick(bed.work / "stick.img", "STICK")
    with bed.machine(Options(firmware=BIOS, memory_mib=700, disks=[Disk(inner)])) as machine:
        machine.wait_line("reads from the medium")
        copy(machine, ready(machine, stick))
    check_none(differences(wanted, arrived(bed, stick)), "the stick is not what was rescued")


def no_keyboard(bed: Bed) -> None:
    """The mouse alone is enough, from power on to the end."""
    inner, wanted = inner_disk(bed)
    stick = disks.stick(bed.work / "stick.img", "STICK")
    with bed.machine(Options(firmware=UEFI, keyboard=False, disks=[Disk(inner)])) as machine:
        copy(machine, ready(machine, stick))
    check_none(differences(wanted, arrived(bed, stick)), "the stick is not what was rescued")


def usb_case(bed: Bed) -> None:
    """The dead computer's drive in a USB case: rescued from, never copied to, and not changed."""
    files = disks.user_files(22) | {"Windows/System32/kernel32.dll": b"MZ" * 2000, "Windows/explorer.exe": b"MZ"}
    part = disks.fat(bed.work / "part", "CASE", disks.write_folder(bed.work / "files", files))
    linux = {**disks.user_files(23, 2), "etc/os-release": b"NAME=Linux\n", "etc/hostname": b"box\n"}
    other = disks.ext4(bed.work / "other", "Old Linux", disks.write_folder(bed.work / "files", linux))
    case = disks.whole_disk(bed.work / "case.img", [(other, disks.LINUX), (part, disks.WINDOWS)])
    wanted = below("Old Linux", disks.manifest(linux)) | below("CASE", disks.manifest(files))
    stick = disks.stick(bed.work / "stick.img", "STICK")
    seal = Seal([case])
    with bed.machine(Options(firmware=BIOS, disks=[Disk(case, "usb")])) as machine:
        machine.wait_line(r"asks source .*")
        panel = Panel(machine, "the question what the USB disk is for")
        machine.shoot("source-or-target")
        panel.choose(RESCUE_FROM_IT)
        machine.wait_line(r"volume \S+ ext4 source -> Old Linux")
        window = ready(machine, stick)
        window.tick(1)
        copy(machine, window)
    check_none(differences(wanted, arrived(bed, stick)), "the stick is not what was rescued")
    check_none(seal.broken(), "a disk that was only to be read")


def no_screen(bed: Bed) -> None:
    """Without a picture to draw on the session says so and does not restart again and again."""
    with bed.machine(Options(firmware=UEFI, screen=False)) as machine:
        machine.wait_line("no screen")
        text = "Tarnwick cannot show its window"
        machine.wait("the words on the console", lambda: text in machine.shell("cat /dev/vcs1"), 30)
        machine.press("ret")
        machine.wait_line("restart")
        reason = machine.wait_reset()
        check(reason == "guest-reset", f"the computer did not restart: {reason}")


def program_ends(bed: Bed) -> None:
    """The program is gone in the middle of a copy: it can be started again, and another copy is whole."""
    inner, wanted = inner_disk(bed)
    stick = disks.stick(bed.work / "stick.img", "STICK")
    with bed.machine(Options(firmware=BIOS, disks=[Disk(inner)])) as machine:
        window = ready(machine, stick)
        machine.slow_down("stick", 200_000)
        window.copy()
        window.wait("the bar on its way", lambda picture: window.is_copy_page(picture) and window.bar(picture) > 20)
        machine.shell("kill -KILL $(busybox pidof TarnwickMacPE)")
        machine.wait_line("program ended 137")
        machine.slow_down("stick", 0)
        panel = Panel(machine, "the question what to do now")
        machine.shoot("again-or-restart")
        panel.press()
        window = Window(machine)
        window.tick(0)
        window.wait("the stick in the window", window.has_disk)
        copy(machine, window)
        machine.wait_line(r"asks end.*")
        panel = Panel(machine, "the question at the end")
        machine.shoot("restart-or-off")
        panel.press_other()
        reason = machine.wait_reset()
        check(reason == "guest-shutdown", f"the computer is not off: {reason}")
    first, second = disks.rescues(disks.read_stick(stick, bed.work / "read"))
    check_none(differences(wanted, manifest_of(second)), f"the second rescue, after {first.name}, is not whole")


STORIES: dict[str, Callable[[Bed], None]] = {
    "same-names": same_names,
    "no-stick": no_stick,
    "full-stick": full_stick,
    "bad-sectors": bad_sectors,
    "disk-hangs": disk_hangs,
    "little-memory": little_memory,
    "no-keyboard": no_keyboard,
    "usb-case": usb_case,
    "no-screen": no_screen,
    "program-ends": program_ends,
}

if __name__ == "__main__":
    need("mke2fs", "mformat", "mcopy", "sfdisk")
    main(f"trouble_{sys.argv[1]}", STORIES[sys.argv[1]])
