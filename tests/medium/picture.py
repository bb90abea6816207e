"""A picture of the guest's screen: its pixels, what is found in them, and a PNG for people."""

from __future__ import annotations

import re
import struct
import zlib
from dataclasses import dataclass
from pathlib import Path
from typing import Optional

Colour = tuple[int, int, int]


@dataclass(frozen=True)
class Box:
    """A rectangle of pixels: left, top, width, height."""

    x: int
    y: int
    width: int
    height: int

    @property
    def middle(self) -> tuple[int, int]:
        """The pixel in the middle."""
        return self.x + self.width // 2, self.y + self.height // 2


def near(one: Colour, other: Colour, far: int = 12) -> bool:
    """Whether no part of the two colours differs by more than `far`."""
    return all(abs(a - b) <= far for a, b in zip(one, other))


def is_orange(colour: Colour) -> bool:
    """Whether it is one of the colours between which the program's buttons and ticks run."""
    red, green, blue = colour
    return red >= 240 and 110 <= green <= 195 and blue <= 60


def is_green(colour: Colour) -> bool:
    """Whether it is the green of the program's good signs."""
    red, green, blue = colour
    return green > red + 50 and green > blue + 30


class Picture:
    """The pixels of one screen, three bytes each, from the top left."""

    def __init__(self, width: int, height: int, pixels: bytes) -> None:
        self.width, self.height, self.pixels = width, height, pixels

    @staticmethod
    def of_ppm(data: bytes) -> "Picture":
        """Reads a binary PPM of 8 bits as QEMU writes it; raises ValueError for anything else."""
        head = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
        if not head:
            raise ValueError("no PPM of 8 bits")
        width, height = int(head.group(1)), int(head.group(2))
        pixels = data[head.end():]
        if len(pixels) != 3 * width * height or not pixels:
            raise ValueError("the PPM is cut off")
        return Picture(width, height, pixels)

    def at(self, x: int, y: int) -> Colour:
        """The colour of one pixel; black outside the picture."""
        if not (0 <= x < self.width and 0 <= y < self.height):
            return 0, 0, 0
        place = 3 * (y * self.width + x)
        return self.pixels[place], self.pixels[place + 1], self.pixels[place + 2]

    def row(self, x: int, y: int, width: int) -> bytes:
        """The bytes of some pixels beside each other."""
        place = 3 * (y * self.width + x)
        return self.pixels[place:place + 3 * width]

    def save(self, path: Path) -> None:
        """Writes the picture as a PNG."""
        row = 3 * self.width
        lines = b"".join(b"\0" + self.pixels[y * row:(y + 1) * row] for y in range(self.height))
        head = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        chunks = ((b"IHDR", head), (b"IDAT", zlib.compress(lines, 6)), (b"IEND", b""))
        data = b"\x89PNG\r\n\x1a\n"
        for name, body in chunks:
            data += struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))
        path.write_bytes(data)

    def shades(self) -> int:
        """How many colours there are on every fourth pixel; one or two mean a blank or a text screen."""
        return len({self.at(x, y) for y in range(0, self.height, 4) for x in range(0, self.width, 4)})

    def solid_runs(self, y: int, least: int) -> list[tuple[int, int]]:
        """The stretches of a line that are orange without a gap and at least `least` wide."""
        found: list[tuple[int, int]] = []
        start = -1
        for x in range(self.width + 1):
            orange = x < self.width and is_orange(self.at(x, y))
            if orange and start < 0:
                start = x
            elif not orange and start >= 0:
                if x - start >= least:
                    found.append((start, x - start))
                start = -1
        return found

    def buttons(self, inside: Optional[Box] = None) -> list[Box]:
        """The filled orange buttons: stretches of 60 pixels and more, 20 lines and more high, top first."""
        area = inside or Box(0, 0, self.width, self.height)
        found: list[Box] = []
        for y in range(area.y, area.y + area.height):
            for start, width in self.solid_runs(y, 60):
                if start < area.x or start + width > area.x + area.width:
                    continue
                if any(b.x <= start + 4 and start < b.x + b.width and b.y <= y < b.y + b.height for b in found):
                    continue
                found.append(Box(start, y, width, self._depth(start + 4, y)))
        return [box for box in found if 20 <= box.height <= 120]

    def outlined(self, inside: Box) -> list[Box]:
        """The buttons that have an orange edge alone, top first."""
        found: list[Box] = []
        lines = [Box(x, y, width, 1) for y in range(inside.y, inside.y + inside.height)
                 for x, width in self.solid_runs(y, 60) if inside.x <= x and x + width <= inside.x + inside.width]
        for upper in lines:
            for lower in lines:
                same = abs(upper.x - lower.x) <= 2 and abs(upper.width - lower.width) <= 4
                if same and 24 <= lower.y - upper.y <= 60 and not is_orange(self.at(upper.x + 12, upper.y + 12)):
                    found.append(Box(upper.x, upper.y, upper.width, lower.y - upper.y + 1))
                    break
        return found

    def _depth(self, x: int, y: int) -> int:
        """How many lines below a pixel are orange."""
        end = y
        while end < self.height and is_orange(self.at(x, end)):
            end += 1
        return end - y

    def close_button(self, inside: Optional[Box] = None) -> Optional[tuple[int, int]]:
        """The middle of the first red round button of a title bar, from the top left."""
        area = inside or Box(0, 0, self.width, self.height)
        for y in range(area.y, area.y + area.height, 2):
            for x in range(area.x, area.x + area.width, 2):
                if self._is_red(x, y):
                    middle = self._round_middle(x, y)
                    if middle:
                        return middle
        return None

    def _round_middle(self, x: int, y: int) -> Optional[tuple[int, int]]:
        """The middle of the red disc of 8 to 28 pixels that a pixel near its top belongs to."""
        bottom = y
        while self._is_red(x, bottom + 1):
            bottom += 1
        top = y
        while self._is_red(x, top - 1):
            top -= 1
        row = (top + bottom) // 2
        left = right = x
        while self._is_red(left - 1, row):
            left -= 1
        while self._is_red(right + 1, row):
            right += 1
        wide = right - left + 1
        return ((left + right) // 2, row) if 8 <= wide <= 28 and abs(wide - (bottom - top + 1)) <= 5 else None

    def _is_red(self, x: int, y: int) -> bool:
        red, green, blue = self.at(x, y)
        return red >= 225 and 70 <= green <= 125 and 55 <= blue <= 105
