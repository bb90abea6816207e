"""Disks that only a kernel can fill: they are filled in a guest that the medium itself boots, and the power is cut.

Made there: an XFS in LVM whose last files stand in its journal alone, an ext4 in LUKS, and the files
of an APFS, where its driver can be built (Debian's apfs-dkms and the headers of the image's kernel).
"""

from __future__ import annotations

import os
import re
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Optional

import disks
from compare import Manifest, below
from journey import Bed
from vm import BIOS, Disk, Machine, Options

PASSWORD = "secret"
LATE = {"late letter.txt": b"written a moment before the power went\n" * 90, "last photo.jpg": bytes(range(256)) * 300}

FILL = r"""
set -eu
node() { readlink -f "/dev/disk/by-id/"usb-*"_$1-0:0${2:-}"; }
from=/run/transfer
mkdir -p /run/a /run/b /run/c
lvm=$(node solid -part2)
pvcreate -qq -y "$lvm"
vgcreate -qq vg0 "$lvm"
lvcreate -qq -y -Zn -Wn -l 100%FREE -n data vg0
vgmknodes
dd if="$from/xfs" of=/dev/vg0/data bs=1M conv=sparse,fsync
locked=$(node locked)
pbkdf="--pbkdf pbkdf2 --pbkdf-force-iterations 1000"
printf PASSWORD | cryptsetup luksFormat -q --type luks2 $pbkdf --label Locked "$locked" -
printf PASSWORD | cryptsetup open "$locked" inner -
dd if="$from/secret" of=/dev/mapper/inner bs=1M conv=fsync
cryptsetup close inner
if [ -e "$from/apfs.ko" ]; then
    modprobe libcrc32c
    insmod "$from/apfs.ko"
    mount -t apfs -o readwrite "$(node mac -part2)" /run/b
    cp -r "$from/apfs/." /run/b/
    umount /run/b
fi
mount -t xfs /dev/vg0/data /run/a
cp -r "$from/files/." /run/a/
sync
for name in "late letter.txt" "last photo.jpg"; do
    dd if="$from/late/$name" of="/run/a/$name" bs=4096 conv=fsync
done
echo filled
"""


@dataclass
class Filled:
    """The disks, and what has to arrive of each of their volumes."""

    solid: Path
    second: Path
    mac: Path
    locked: Path
    wanted: dict[str, Manifest]
    apfs_has_files: bool


def kernel_of(bed: Bed) -> str:
    """The version of the image's kernel, as it names itself."""
    text = disks.run("mdir", "-b", "-i", f"{bed.image}@@1M", "::/live")
    kernel = bed.work / "vmlinuz"
    if "vmlinuz" not in text:
        return ""
    disks.run("mcopy", "-o", "-i", f"{bed.image}@@1M", "::/live/vmlinuz", kernel)
    data = kernel.read_bytes()
    at = int.from_bytes(data[0x20E:0x210], "little") + 0x200
    return data[at:data.index(b"\0", at)].split()[0].decode()


def apfs_driver(bed: Bed, work: Path) -> Optional[Path]:
    """Debian's driver for APFS, built for the image's kernel; None where packages are missing."""
    kernel = kernel_of(bed)
    common = re.sub(r"-amd64$", "-common", kernel)
    packages = ["apfs-dkms", f"linux-headers-{kernel}", f"linux-headers-{common}", "linux-kbuild-6.1",
                "linux-compiler-gcc-12-x86"]
    work.mkdir(parents=True, exist_ok=True)
    command = ["apt-get", "download", "-q", *packages]
    got = subprocess.run(command, cwd=work, capture_output=True, text=True, check=False)
    if got.returncode or not kernel or not shutil.which("gcc-12") or not shutil.which("make"):
        print(f"no driver for APFS, its volume stays empty: {got.stderr.strip()[-200:] or 'gcc-12 or make is missing'}")
        return None
    root = work / "root"
    for package in work.glob("*.deb"):
        disks.run("dpkg-deb", "-x", package, root)
    headers = root / "usr/src" / f"linux-headers-{kernel}"
    makefile = headers / "Makefile"
    makefile.write_text(makefile.read_text().replace("/usr/src", f"{root}/usr/src"))
    source = next((root / "usr/src").glob("linux-apfs-rw-*"))
    disks.run("make", "-C", headers, f"M={source}", f"-j{os.cpu_count()}", "modules")
    return source / "apfs.ko"


def transfer(bed: Bed, files: dict[str, bytes], apfs: dict[str, bytes], secret: Path, driver: Optional[Path]) -> Path:
    """A disk with all that the guest writes to the others."""
    folder = disks.write_folder(bed.work / "transfer", {f"files/{name}": data for name, data in files.items()})
    disks.write_folder(folder / "late", LATE)
    disks.write_folder(folder / "apfs", apfs)
    disks.xfs(folder / "xfs", "XfsData")
    shutil.move(secret, folder / "secret")
    (folder / "fill").write_text(FILL.replace("PASSWORD", PASSWORD))
    if driver:
        disks.run("strip", "--strip-debug", driver)
        shutil.copy(driver, folder / "apfs.ko")
    path = disks.ext4(bed.work / "transfer.img", "TRANSFER", folder, 500)
    shutil.rmtree(folder)
    return path


def fill(bed: Bed, filled: Filled, carrier: Path) -> None:
    """Boots the medium, keeps its session from touching what is plugged in, and fills the disks."""
    with bed.machine(Options(firmware=BIOS), "filling") as machine:
        machine.wait_line("window")
        machine.shell("rm -f /run/tarnwick/ready")
        names = {"solid": filled.solid, "mac": filled.mac, "locked": filled.locked, "transfer": carrier}
        for name, path in names.items():
            machine.plug(name, Disk(path, "usb"))
            wait_for_disk(machine, name)
        machine.shell("mkdir -p /run/transfer; mount -o ro /dev/disk/by-label/TRANSFER /run/transfer")
        machine.say(machine.shell("sh /run/transfer/fill", 400)[-300:])
        machine.cut_power()


def wait_for_disk(machine: Machine, name: str) -> None:
    """Until udev knows a disk and its partitions."""

    def known() -> bool:
        code, _ = machine.shell_code(f"udevadm settle -t 20; ls /dev/disk/by-id/usb-*_{name}-0:0")
        return code == 0

    machine.wait(f"disk {name} in the guest", known, 60)


def make(bed: Bed) -> Filled:
    """All disks of the great journey."""
    work = bed.work
    users, more, mac = disks.user_files(11), disks.user_files(12, photos=3), disks.user_files(13, photos=3)
    apple, secret, data = disks.user_files(14, photos=4), disks.user_files(15, photos=2), disks.user_files(16, photos=3)
    roots = disks.root_files(17)
    driver = apfs_driver(bed, work / "driver")
    home = disks.user_files(18, photos=2)
    system = {**users, "etc/os-release": b"NAME=Debian\n"}
    folder = disks.write_folder(work / "f", {**system, **{f"home/{name}": data for name, data in home.items()}})
    linux = disks.ext4_after_power_cut(work / "linux", "Linux", folder, LATE)
    solid = disks.whole_disk(work / "solid.img", [(linux, disks.LINUX), (disks.blank(work / "lvm", 340), disks.LVM)])
    windows = disks.ntfs(work / "windows", "Windows C", roots)
    butter = disks.btrfs(work / "btrfs", "Butter", disks.write_folder(work / "f", more))
    second = disks.whole_disk(work / "second.img", [(windows, disks.WINDOWS), (butter, disks.LINUX)])
    old = disks.hfsplus(work / "hfs", "MacOld", disks.write_folder(work / "f", mac))
    new = disks.apfs(work / "apfs", "Macintosh HD")
    macs = disks.whole_disk(work / "mac.img", [(old, disks.MAC_HFS), (new, disks.MAC_APFS)])
    inner = disks.ext4(work / "secret", "Secret", disks.write_folder(work / "f", secret), 64)
    # Homes are a volume of their own, and are copied once.
    wanted = {"Linux": {**system, **LATE}, "Linux (home)": home, "XfsData": {**data, **LATE}, "Windows C": roots,
              "Butter": more, "MacOld": mac, "Macintosh HD": apple if driver else {}, "Secret": secret}
    filled = Filled(solid, second, macs, disks.blank(work / "locked.img", 96),
                    {name: below(name, disks.manifest(files)) for name, files in wanted.items()}, driver is not None)
    fill(bed, filled, transfer(bed, data, apple, inner, driver))
    return filled
