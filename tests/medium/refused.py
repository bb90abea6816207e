#!/usr/bin/env python3
"""Under Secure Boot a boot loader that is not signed, or was changed, does not start: refused.py unsigned|changed"""

from __future__ import annotations

import json
import re
import shutil
import sys
from pathlib import Path

import disks
from journey import Bed, check, main, need
from vm import SECURE, Options

LOADER = "::/EFI/BOOT/grubx64.efi"


def boot_partition(image: Path) -> int:
    """Where the image's EFI partition begins, in bytes."""
    table = json.loads(disks.run("sfdisk", "-J", image))["partitiontable"]
    part = next(p for p in table["partitions"] if p["type"].upper() == "C12A7328-F81F-11D2-BA4B-00A0C93EC93B")
    return int(part["start"]) * 512


def without_signature(program: bytes) -> bytes:
    """A 64-bit PE program whose table of certificates is said to be empty."""
    header = int.from_bytes(program[0x3C:0x40], "little")
    entry = header + 24 + 112 + 4 * 8
    check(program[header:header + 4] == b"PE\0\0", "the boot loader is no PE program")
    check(program[entry:entry + 8] != bytes(8), "the boot loader was not signed anyway")
    return program[:entry] + bytes(8) + program[entry + 8:]


def with_other_byte(program: bytes) -> bytes:
    """The program with one letter of a message changed, which its signature does not cover any more."""
    at = program.index(b"GRUB")
    return program[:at] + b"g" + program[at + 1:]


def tampered(bed: Bed, kind: str) -> Path:
    """A copy of the image with another boot loader."""
    image = bed.work / "tampered.img"
    shutil.copyfile(bed.image, image)
    place = f"{image}@@{boot_partition(image)}"
    loader = bed.work / "loader.efi"
    disks.run("mcopy", "-o", "-i", place, LOADER, loader)
    change = without_signature if kind == "unsigned" else with_other_byte
    loader.write_bytes(change(loader.read_bytes()))
    disks.run("mcopy", "-o", "-i", place, loader, LOADER)
    return image


def story(bed: Bed) -> None:
    bed.image = tampered(bed, sys.argv[1])
    with bed.machine(Options(firmware=SECURE)) as machine:
        refusal = re.compile(r"(?i)security violation|verification failed|access denied|bad shim signature")
        machine.wait("the refusal", lambda: refusal.search(machine.serial()), 120)
        machine.say(f"refused: {refusal.findall(machine.serial())}")
        machine.shoot("refused")
        check(not machine.lines(), f"the medium was started all the same: {machine.lines()}")
        check("Welcome to GRUB" not in machine.serial(), "the boot loader was started all the same")


if __name__ == "__main__":
    need("sfdisk", "mcopy")
    main(f"refused_{sys.argv[1]}", story)
