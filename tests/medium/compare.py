"""What was there, and whether all of it arrived: lists of files with size and checksum."""

from __future__ import annotations

import hashlib
import json
from dataclasses import asdict, dataclass
from pathlib import Path


@dataclass(frozen=True)
class Entry:
    """One file: its size in bytes and the SHA-256 of its bytes."""

    size: int
    sha256: str


Manifest = dict[str, Entry]


def entry_of(data: bytes) -> Entry:
    """The entry of a file with these bytes."""
    return Entry(len(data), hashlib.sha256(data).hexdigest())


def checksum(path: Path) -> str:
    """The SHA-256 of a file or a whole disk, read in pieces."""
    total = hashlib.sha256()
    with path.open("rb") as file:
        while piece := file.read(1 << 20):
            total.update(piece)
    return total.hexdigest()


def manifest_of(folder: Path) -> Manifest:
    """Every plain file below a folder by its path from there; links are not followed."""
    found: Manifest = {}
    for path in sorted(folder.rglob("*")):
        if path.is_file() and not path.is_symlink():
            found[str(path.relative_to(folder))] = Entry(path.stat().st_size, checksum(path))
    return found


def below(name: str, files: Manifest) -> Manifest:
    """The same files one folder deeper."""
    return {f"{name}/{path}": entry for path, entry in files.items()}


def differences(wanted: Manifest, found: Manifest) -> list[str]:
    """A line for each file that is missing, there without reason, or not the same; none when all is well."""
    lines = [f"missing: {path}" for path in sorted(wanted.keys() - found.keys())]
    lines += [f"not expected: {path}" for path in sorted(found.keys() - wanted.keys())]
    for path in sorted(wanted.keys() & found.keys()):
        if wanted[path].size != found[path].size:
            lines.append(f"{wanted[path].size} bytes became {found[path].size}: {path}")
        elif wanted[path].sha256 != found[path].sha256:
            lines.append(f"other bytes: {path}")
    return lines


def save(path: Path, files: Manifest) -> None:
    """Writes a manifest as JSON."""
    path.write_text(json.dumps({name: asdict(entry) for name, entry in files.items()}, indent=1), encoding="utf-8")


def load(path: Path) -> Manifest:
    """Reads what `save` wrote."""
    return {name: Entry(**entry) for name, entry in json.loads(path.read_text(encoding="utf-8")).items()}


class Seal:
    """The checksums of disks that must not change between the sealing and `broken`."""

    def __init__(self, paths: list[Path]) -> None:
        self._sums = {path: checksum(path) for path in paths}

    def broken(self) -> list[str]:
        """A line for each disk that is not what it was."""
        return [f"changed: {path.name}" for path, total in self._sums.items() if checksum(path) != total]
