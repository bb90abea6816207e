#!/usr/bin/env python3
"""One way to start the computer, up to the window: boot.py secure|efi|ia32|bios|safe

The guest says how it was started; the window's pixels say that it is there.
"""

from __future__ import annotations

import sys
from dataclasses import dataclass

import disks
from journey import Bed, check, main, need
from menu import Menu
from vm import BIOS, SECURE, UEFI, UEFI_32, Disk, Firmware, Machine, Options
from window import Window


@dataclass(frozen=True)
class Way:
    """A way to start, and the guest's words for it: bits of the firmware (0 is a BIOS) and Secure Boot."""

    firmware: Firmware
    bits: str
    secure: str
    safe: bool = False


WAYS = {
    "secure": Way(SECURE, "64", "1"),
    "efi": Way(UEFI, "64", "0"),
    "ia32": Way(UEFI_32, "32", "0"),
    "bios": Way(BIOS, "0", "none"),
    "safe": Way(UEFI, "64", "0", safe=True),
}
SAFE_LINE = 10


def firmware_bits(machine: Machine) -> str:
    """How wide the firmware is that the guest was started by; 0 for a BIOS."""
    return machine.shell("cat /sys/firmware/efi/fw_platform_size 2>/dev/null || echo 0").strip()


def secure_boot(machine: Machine) -> str:
    """The guest's word for Secure Boot: 1, 0, or none where the firmware has no such thing."""
    variables = "/sys/firmware/efi/efivars"
    machine.shell(f"! [ -d {variables} ] || mountpoint -q {variables} || mount -t efivarfs efi {variables}")
    words = machine.shell(f"od -An -tu1 -j4 {variables}/SecureBoot-* 2>/dev/null || echo none").split()
    return words[-1]


def choose_safe_graphics(machine: Machine) -> None:
    """Takes the menu's last line, and the first one behind it; the screen is smaller then."""
    menu = Menu(machine)
    machine.shoot("menu")
    menu.down(SAFE_LINE)
    menu.open()
    machine.shoot("menu-safe")
    menu.take()
    machine.options.width, machine.options.height = 1024, 768


def look_at(machine: Machine, way: Way) -> None:
    """The guest's words and the window."""
    seconds = machine.seconds()
    Window(machine)
    machine.shoot("window")
    shown = machine.seconds()
    bits, secure = firmware_bits(machine), secure_boot(machine)
    machine.say(f"firmware of {bits} bits, Secure Boot: {secure}, window after {seconds:.0f} to {shown:.0f} s")
    check(bits == way.bits, f"the guest was started by a firmware of {bits} bits instead of {way.bits}")
    check(secure == way.secure, f"Secure Boot is {secure} instead of {way.secure}")
    safe = machine.shell_code("grep -w tarnwick.safe /proc/cmdline")[0] == 0
    check(safe == way.safe, "safe graphics were not what was chosen")


def story(bed: Bed) -> None:
    way = WAYS[bed.name.removeprefix("boot_")]
    files = disks.write_folder(bed.work / "files", disks.user_files(5, photos=1))
    inner = disks.whole_disk(bed.work / "inner.img", [(disks.ext4(bed.work / "e", "Linux", files), disks.LINUX)])
    options = Options(firmware=way.firmware, disks=[Disk(inner)])
    with bed.machine(options) as machine:
        if way.safe:
            choose_safe_graphics(machine)
        machine.wait_line("medium .*")
        machine.wait_line("window")
        look_at(machine, way)


if __name__ == "__main__":
    need("mke2fs", "sfdisk", firmware=WAYS[sys.argv[1]].firmware)
    main(f"boot_{sys.argv[1]}", story)
