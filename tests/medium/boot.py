#!/usr/bin/env python3
"""One way to start the computer, up to the window: boot.py efi|ia32|bios|safe|small|secure

The guest says how it was started; the window's pixels say that it is there.
"""

from __future__ import annotations

import sys
from dataclasses import dataclass

import disks
from journey import Bed, check, main, need
from picture import Colour
from vm import BIOS, SECURE, UEFI, UEFI_32, Disk, Firmware, Machine, Options
from window import Window


@dataclass(frozen=True)
class Way:
    """A way to start, and the guest's words for it: bits of the firmware (0 is a BIOS) and Secure Boot."""

    firmware: Firmware
    bits: str
    secure: str
    safe: bool = False
    width: int = 1280
    height: int = 800


WAYS = {
    "secure": Way(SECURE, "64", "1"),
    "efi": Way(UEFI, "64", "0"),
    "ia32": Way(UEFI_32, "32", "0"),
    "bios": Way(BIOS, "0", "none"),
    "safe": Way(UEFI, "64", "0", safe=True),
    "safe-bios": Way(BIOS, "0", "none", safe=True),
    "small": Way(UEFI, "64", "0", width=1024, height=768),
}


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
    """Takes the last entry of GRUB's menu, and the first of the menu behind it."""

    def shows_menu() -> bool:
        picture = machine.look()
        grid = ((x, y) for y in range(0, picture.height, 8) for x in range(0, picture.width, 8))
        return any(is_selected(picture.at(*place)) for place in grid)

    machine.wait("GRUB's menu", shows_menu, 60)
    machine.press("end")
    machine.shoot("menu")
    machine.press("ret")
    machine.shoot("menu-safe")
    machine.press("ret")


def is_selected(colour: Colour) -> bool:
    """Whether a pixel has the blue of the menu's chosen entry."""
    red, green, blue = colour
    return blue > 130 and red < 60 and green < 60


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
    safe = machine.shell("grep -cw -e nomodeset -e tarnwick.safe /proc/cmdline || true").strip() != "0"
    check(safe == way.safe, "safe graphics were not what was chosen")


def story(bed: Bed) -> None:
    way = WAYS[bed.name.removeprefix("boot_")]
    files = disks.write_folder(bed.work / "files", disks.user_files(5, photos=1))
    inner = disks.whole_disk(bed.work / "inner.img", [(disks.ext4(bed.work / "e", "Linux", files), disks.LINUX)])
    options = Options(firmware=way.firmware, width=way.width, height=way.height, disks=[Disk(inner)])
    with bed.machine(options) as machine:
        if way.safe:
            choose_safe_graphics(machine)
        machine.wait_line("medium .*")
        machine.wait_line("window")
        look_at(machine, way)


if __name__ == "__main__":
    need("mke2fs", "sfdisk", firmware=WAYS[sys.argv[1]].firmware)
    main(f"boot_{sys.argv[1]}", story)
