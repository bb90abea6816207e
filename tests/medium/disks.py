"""Made-up disks: partitions with files from a seed, made without root and without loop devices."""

from __future__ import annotations

import os
import random
import re
import shutil
import subprocess
import uuid
from pathlib import Path

from compare import Manifest, entry_of, manifest_of

MIB = 1 << 20
# What mtools takes file names for.
ENVIRONMENT = {**os.environ, "LC_ALL": "C.UTF-8", "MTOOLS_SKIP_CHECK": "1"}
ENVIRONMENT["PATH"] += ":/usr/sbin:/sbin"
LINUX, WINDOWS, LVM = (
    "0FC63DAF-8483-4772-8E79-3D69D8477DE4",
    "EBD0A0A2-B9E5-4433-87C0-68B6B72699C7",
    "E6D6D379-F507-44C2-A23C-238F2A3DF928",
)
MAC_HFS, MAC_APFS = "48465300-0000-11AA-AA11-00306543ECAC", "7C3457EF-0000-11AA-AA11-00306543ECAC"


def run(*command: object, stdin: bytes = b"") -> str:
    """What a command prints; raises RuntimeError with all of it when it fails."""
    words = [str(word) for word in command]
    done = subprocess.run(words, input=stdin, capture_output=True, env=ENVIRONMENT, check=False)
    text = (done.stdout + done.stderr).decode(errors="replace")
    if done.returncode:
        raise RuntimeError(f"{' '.join(words)} gave {done.returncode}: {text}")
    return text


def blank(path: Path, mib: int) -> Path:
    """An empty file of that size, which takes no room yet."""
    path.unlink(missing_ok=True)
    with path.open("wb") as file:
        file.truncate(mib * MIB)
    return path


# --- Files -------------------------------------------------------------------


def user_files(seed: int, photos: int = 6, photo_bytes: int = 400_000) -> dict[str, bytes]:
    """The files of somebody: letters, photos, names of other scripts, an empty one, one just over a block."""
    chance = random.Random(seed)
    files = {f"Users/anna/Pictures/IMG_{n:04}.jpg": chance.randbytes(photo_bytes + n) for n in range(photos)}
    files["Users/anna/Documents/Letter to the bank.txt"] = b"Dear all,\n" + chance.randbytes(100).hex().encode()
    files["Users/anna/Documents/Bücher/Straße der Möwen.odt"] = chance.randbytes(33_333)
    files["Users/anna/Documents/写真/家族の夏.jpg"] = chance.randbytes(70_000)
    files["Users/anna/Documents/empty.txt"] = b""
    files["Users/anna/Documents/a/b/c/d/e/deep.bin"] = chance.randbytes(4097)
    files["readme.txt"] = chance.randbytes(12).hex().encode()
    return files


def root_files(seed: int) -> dict[str, bytes]:
    """Files without folders, for file systems that can be filled only there."""
    chance = random.Random(seed)
    files = {f"Foto {n}.jpg": chance.randbytes(250_000 + n) for n in range(4)}
    files["Müller & Söhne.docx"] = chance.randbytes(40_000)
    files["Steuer 2025.xlsx"] = chance.randbytes(5000)
    return files


def manifest(files: dict[str, bytes]) -> Manifest:
    """What has to arrive of them."""
    return {name: entry_of(data) for name, data in files.items()}


def write_folder(folder: Path, files: dict[str, bytes]) -> Path:
    """Writes files below a folder that is made anew."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for name, data in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
    return folder


# --- File systems ------------------------------------------------------------


def ext4(path: Path, label: str, folder: Path, mib: int = 64) -> Path:
    """An ext4 with what lies in a folder."""
    run("mke2fs", "-q", "-F", "-t", "ext4", "-b", "4096", "-L", label, "-d", folder, blank(path, mib))
    return path


def ext4_after_power_cut(path: Path, label: str, folder: Path, late: dict[str, bytes]) -> Path:
    """An ext4 whose last files stand in the journal alone, as after a power cut.

    `late` (names without folders) is there for whoever replays the journal, and for nobody
    else: the blocks that it changes are written into the journal, and only there.
    """
    ext4(path, label, folder)
    after = path.with_suffix(".after")
    shutil.copyfile(path, after)
    for name, data in late.items():
        source = path.with_suffix(".late")
        source.write_bytes(data)
        run("debugfs", "-w", "-f", "-", after, stdin=f'write "{source}" "{name}"\n'.encode())
        source.unlink()
    old, new = path.read_bytes(), after.read_bytes()
    changed = [n for n in range(1, len(old) // 4096) if old[n * 4096:(n + 1) * 4096] != new[n * 4096:(n + 1) * 4096]]
    blocks = path.with_suffix(".blocks")
    blocks.write_bytes(b"".join(new[n * 4096:(n + 1) * 4096] for n in changed))
    numbers = ",".join(map(str, changed))
    run("debugfs", "-w", "-f", "-", path, stdin=f"jo\njw -b {numbers} {blocks}\njc\n".encode())
    after.unlink()
    blocks.unlink()
    if "needs_recovery" not in run("dumpe2fs", "-h", path):
        raise RuntimeError("the journal was not written")
    return path


def fat(path: Path, label: str, folder: Path, mib: int = 64) -> Path:
    """A FAT32 with what lies in a folder."""
    run("mformat", "-i", blank(path, mib), "-F", "-v", label, "-T", mib * MIB // 512, "-h", 16, "-s", 32, "::")
    entries = sorted(folder.iterdir())
    if entries:
        run("mcopy", "-s", "-m", "-i", path, *entries, "::")
    return path


def ntfs(path: Path, label: str, files: dict[str, bytes], mib: int = 64) -> Path:
    """An NTFS with files in its uppermost folder; ntfscp makes no folders."""
    run("mkntfs", "-q", "-F", "-Q", "-L", label, blank(path, mib))
    source = path.with_suffix(".file")
    for name, data in files.items():
        source.write_bytes(data)
        run("ntfscp", "-f", path, source, name)
    source.unlink()
    return path


def btrfs(path: Path, label: str, folder: Path, mib: int = 128) -> Path:
    """A btrfs with what lies in a folder."""
    run("mkfs.btrfs", "-q", "-f", "-L", label, "--rootdir", folder, blank(path, mib))
    return path


def xfs(path: Path, label: str, mib: int = 320) -> Path:
    """An empty XFS."""
    run("mkfs.xfs", "-q", "-f", "-L", label, blank(path, mib))
    return path


def apfs(path: Path, label: str, mib: int = 128) -> Path:
    """An APFS with one volume, which is empty."""
    run("mkapfs", "-L", label, blank(path, mib))
    return path


def hfsplus(path: Path, label: str, folder: Path) -> Path:
    """An HFS+ with what lies in a folder: the Macintosh side of a hybrid disc image."""
    disc = path.with_suffix(".iso")
    run("xorriso", "-as", "mkisofs", "-quiet", "-hfsplus", "-V", label, "-o", disc, folder)
    data = disc.read_bytes()
    start, size = apple_partition(data)
    path.write_bytes(data[start:start + size])
    disc.unlink()
    return path


def apple_partition(data: bytes) -> tuple[int, int]:
    """Where the HFS+ partition of an Apple partition map lies: first byte and size."""
    for at in range(512, 64 * 2048, 512):
        if data[at:at + 2] == b"PM" and data[at + 48:at + 57] == b"Apple_HFS":
            block = 2048 if data[2048:2050] == b"PM" and data[512:514] != b"PM" else 512
            start = int.from_bytes(data[at + 8:at + 12], "big") * block
            return start, int.from_bytes(data[at + 12:at + 16], "big") * block
    raise RuntimeError("the disc image has no HFS+ partition")


# --- Disks -------------------------------------------------------------------


def whole_disk(path: Path, parts: list[tuple[Path, str]]) -> Path:
    """A GPT disk with these file systems, each with its partition type; the parts are used up."""
    starts, at = [], 1
    for part, _ in parts:
        starts.append(at)
        at += -(-part.stat().st_size // MIB)
    lines = ["label: gpt", f"label-id: {uuid.uuid5(uuid.NAMESPACE_URL, path.name)}"]
    for start, (part, kind) in zip(starts, parts):
        # No longer than the file system: HFS+ has its second header at the partition's end.
        lines.append(f"start={start * 2048}, size={part.stat().st_size // 512}, type={kind}")
    run("sfdisk", "-q", blank(path, at + 1), stdin="\n".join(lines).encode() + b"\n")
    for start, (part, _) in zip(starts, parts):
        put(part, path, start * MIB)
        part.unlink()
    return path


def put(source: Path, disk: Path, at: int) -> None:
    """Writes a file into a disk at a byte; stretches of zeros are left as they are."""
    zeros = bytes(MIB)
    with source.open("rb") as part, disk.open("r+b") as file:
        while piece := part.read(MIB):
            if piece != zeros[:len(piece)]:
                file.seek(at)
                file.write(piece)
            at += len(piece)


def stick(path: Path, label: str, mib: int = 512, kind: str = "fat") -> Path:
    """A USB stick with one partition, as a shop sells it: FAT32, or ext4 for tests that look at names."""
    part = path.with_suffix(".part")
    folder = write_folder(path.with_suffix(".none"), {})
    if kind == "fat":
        fat(part, label, folder, mib - 1)
    else:
        ext4(part, label, folder, mib - 1)
    folder.rmdir()
    number = {"fat": "c", "ext4": "83"}[kind]
    run("sfdisk", "-q", blank(path, mib), stdin=f"label: dos\nstart=2048, type={number}\n".encode())
    put(part, path, MIB)
    part.unlink()
    return path


def read_stick(path: Path, folder: Path, kind: str = "fat") -> Path:
    """Takes everything off a stick into a folder that is made anew, without mounting it."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    if kind == "fat":
        if list_fat(path):
            run("mcopy", "-s", "-n", "-m", "-i", f"{path}@@1M", "::*", folder)
        return folder
    if kind != "ext4":
        raise ValueError(f"nobody can read {kind} here")
    part = path.with_suffix(".read")
    with path.open("rb") as disk, part.open("wb") as file:
        disk.seek(MIB)
        shutil.copyfileobj(disk, file, MIB)
    run("e2fsck", "-p", "-f", part)
    run("debugfs", "-R", f'rdump / "{folder}"', part)
    part.unlink()
    shutil.rmtree(folder / "lost+found", ignore_errors=True)
    return folder


def list_fat(path: Path) -> list[str]:
    """The names in the uppermost folder of a FAT stick."""
    text = run("mdir", "-b", "-i", f"{path}@@1M", "::")
    return [name for name in text.splitlines() if name.startswith("::/")]


def rescues(folder: Path) -> list[Path]:
    """The folders of rescues among what was taken off a stick, oldest first."""
    day = re.compile(r"Tarnwick \d{4}-\d\d-\d\d")
    return sorted(path for path in folder.iterdir() if path.is_dir() and day.match(path.name))


def arrived(folder: Path) -> Manifest:
    """The files of the one rescue on a stick; raises RuntimeError when there is none, or more."""
    found = rescues(folder)
    if len(found) != 1:
        raise RuntimeError(f"{len(found)} rescues on the stick: {[path.name for path in folder.iterdir()]}")
    return manifest_of(found[0])
