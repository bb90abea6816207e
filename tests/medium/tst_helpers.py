#!/usr/bin/env python3
"""The checks of the boot tests are checked: each must fail when what it looks at is wrong."""

from __future__ import annotations

import json
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import unittest.mock
import zlib
from pathlib import Path
from typing import Any, Callable, Optional

import disks
from compare import Seal, below, differences, entry_of, load, manifest_of, save
from menu import chosen_line
from picture import Box, Picture, is_orange
from vm import SKIPPED, Failure, Firmware, Machine, Options
from window import GROUND, MessageBox, Panel, Window

ORANGE, RED, WHITE = bytes((255, 160, 23)), bytes((244, 102, 79)), bytes((255, 255, 255))
EDGE = bytes((198, 198, 198))
REFERENCES = Path(__file__).resolve().parent.parent / "visual/reference/1"
TOOLS = ("mke2fs", "debugfs", "dumpe2fs", "e2fsck", "mformat", "mcopy", "mdir", "sfdisk")


def have(*tools: str) -> bool:
    """Whether these commands are installed."""
    return all(shutil.which(tool, path=os.environ["PATH"] + ":/usr/sbin:/sbin") for tool in tools)


def painted(width: int, height: int, *parts: tuple[Box, bytes]) -> Picture:
    """A white picture with filled rectangles."""
    pixels = bytearray(WHITE * (width * height))
    for box, colour in parts:
        for y in range(box.y, box.y + box.height):
            place = 3 * (y * width + box.x)
            pixels[place:place + 3 * box.width] = colour * box.width
    return Picture(width, height, bytes(pixels))


class Comparing(unittest.TestCase):
    """The comparison of what was there with what arrived."""

    def setUp(self) -> None:
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.files = disks.user_files(7, photos=2, photo_bytes=5000)
        self.wanted = disks.manifest(self.files)
        disks.write_folder(self.folder / "copy", self.files)

    def test_the_same_files_are_no_difference(self) -> None:
        self.assertEqual(differences(self.wanted, manifest_of(self.folder / "copy")), [])

    def test_one_other_byte_is_found_in_each_file(self) -> None:
        for name, data in self.files.items():
            if not data:
                continue
            with self.subTest(name):
                path = self.folder / "copy" / name
                path.write_bytes(data[:-1] + bytes((data[-1] ^ 1,)))
                self.assertEqual(differences(self.wanted, manifest_of(self.folder / "copy")), [f"other bytes: {name}"])
                path.write_bytes(data)

    def test_a_missing_file_is_found_also_an_empty_one(self) -> None:
        for name in ("readme.txt", "Users/anna/Documents/empty.txt"):
            with self.subTest(name):
                path = self.folder / "copy" / name
                path.unlink()
                self.assertEqual(differences(self.wanted, manifest_of(self.folder / "copy")), [f"missing: {name}"])
                path.write_bytes(self.files[name])

    def test_a_file_that_is_cut_off_is_found(self) -> None:
        path = self.folder / "copy/readme.txt"
        path.write_bytes(self.files["readme.txt"][:-1])
        self.assertEqual(len(differences(self.wanted, manifest_of(self.folder / "copy"))), 1)

    def test_a_file_too_many_is_found(self) -> None:
        (self.folder / "copy/more").write_bytes(b"")
        self.assertEqual(differences(self.wanted, manifest_of(self.folder / "copy")), ["not expected: more"])

    def test_a_file_in_another_folder_is_missing(self) -> None:
        (self.folder / "copy/readme.txt").rename(self.folder / "copy/Users/readme.txt")
        self.assertEqual(len(differences(self.wanted, manifest_of(self.folder / "copy"))), 2)
        self.assertNotEqual(differences(below("Other", self.wanted), below("Linux", self.wanted)), [])

    def test_a_manifest_is_read_as_it_was_written(self) -> None:
        save(self.folder / "list", self.wanted)
        self.assertEqual(load(self.folder / "list"), self.wanted)

    def test_a_disk_with_one_changed_byte_breaks_its_seal(self) -> None:
        disk = disks.blank(self.folder / "disk", 3)
        seal = Seal([disk])
        self.assertEqual(seal.broken(), [])
        with disk.open("r+b") as file:
            file.seek(2 * disks.MIB + 17)
            file.write(b"x")
        self.assertEqual(seal.broken(), ["changed: disk"])


@unittest.skipUnless(have(*TOOLS), "mke2fs, debugfs, e2fsck, mtools or sfdisk are not installed")
class MadeDisks(unittest.TestCase):
    """The disks hold what they are to hold."""

    def setUp(self) -> None:
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.files = disks.user_files(7, photos=2, photo_bytes=5000)
        self.source = disks.write_folder(self.folder / "source", {f"Tarnwick 2026-01-01  at  1/{name}": data
                                                                  for name, data in self.files.items()})

    def stick(self, kind: str) -> Path:
        """A stick with one rescue on it."""
        stick = disks.stick(self.folder / "stick", "STICK", 128 if kind == "fat" else 32, kind)
        part = self.folder / "part"
        if kind == "fat":
            disks.run("mcopy", "-s", "-m", "-i", f"{stick}@@1M", *self.source.iterdir(), "::")
        else:
            disks.put(disks.ext4(part, "STICK", self.source, 31), stick, disks.MIB)
        return stick

    def test_a_stick_is_read_as_it_was_written(self) -> None:
        for kind in ("fat", "ext4"):
            with self.subTest(kind):
                read = disks.read_stick(self.stick(kind), self.folder / "read", kind)
                self.assertEqual(differences(disks.manifest(self.files), disks.arrived(read)), [])

    def test_one_other_byte_on_a_stick_is_found(self) -> None:
        for kind in ("fat", "ext4"):
            with self.subTest(kind):
                stick = self.stick(kind)
                data = bytearray(stick.read_bytes())
                at = data.find(self.files["Users/anna/Pictures/IMG_0001.jpg"][:64])
                self.assertGreater(at, 0)
                data[at + 5] ^= 1
                stick.write_bytes(data)
                read = disks.read_stick(stick, self.folder / "read", kind)
                self.assertEqual(differences(disks.manifest(self.files), disks.arrived(read)),
                                 ["other bytes: Users/anna/Pictures/IMG_0001.jpg"])

    def test_an_empty_stick_has_no_rescue(self) -> None:
        stick = disks.stick(self.folder / "stick", "STICK", 128)
        with self.assertRaises(RuntimeError):
            disks.arrived(disks.read_stick(stick, self.folder / "read"))

    def test_a_late_file_is_only_there_for_who_replays_the_journal(self) -> None:
        late = {"late.bin": bytes(range(256)) * 40}
        path = disks.ext4_after_power_cut(self.folder / "ext4", "Linux", self.source, late)
        self.assertNotIn("late.bin", disks.run("debugfs", "-R", "ls /", path))
        done = subprocess.run(["e2fsck", "-fy", str(path)], env=disks.ENVIRONMENT, capture_output=True, check=False)
        self.assertLess(done.returncode, 4)
        disks.run("debugfs", "-R", f'dump /late.bin "{self.folder / "late"}"', path)
        self.assertEqual((self.folder / "late").read_bytes(), late["late.bin"])

    def test_a_whole_disk_has_its_parts_where_its_table_says(self) -> None:
        part = disks.ext4(self.folder / "part", "Linux", self.source, 16)
        other = disks.ext4(self.folder / "other", "More", self.source, 16)
        bytes_of_other = other.read_bytes()
        disk = disks.whole_disk(self.folder / "disk", [(part, disks.LINUX), (other, disks.LINUX)])
        self.assertIn("start=       34816", disks.run("sfdisk", "-d", disk))
        data = disk.read_bytes()
        self.assertEqual(data[34816 * 512:34816 * 512 + len(bytes_of_other)], bytes_of_other)

    @unittest.skipUnless(have("xorriso"), "xorriso is not installed")
    def test_an_hfsplus_ends_with_its_partition_where_its_second_header_is(self) -> None:
        part = disks.hfsplus(self.folder / "part", "Mac", self.source)
        disk = disks.whole_disk(self.folder / "disk", [(part, disks.MAC_HFS)])
        entry = json.loads(disks.run("sfdisk", "-J", disk))["partitiontable"]["partitions"][0]
        second = (entry["start"] + entry["size"] - 2) * 512
        self.assertEqual(disk.read_bytes()[second:second + 2], b"H+")


class Pictures(unittest.TestCase):
    """What is found on a screen."""

    def test_a_picture_is_read_from_what_qemu_writes(self) -> None:
        picture = Picture.of_ppm(b"P6\n2 1\n255\n\1\2\3\4\5\6")
        self.assertEqual((picture.at(0, 0), picture.at(1, 0), picture.at(2, 0)), ((1, 2, 3), (4, 5, 6), (0, 0, 0)))

    def test_a_picture_that_is_cut_off_is_refused(self) -> None:
        for data in (b"P6\n2 1\n255\n\1\2\3\4\5", b"P5\n2 1\n255\n\1\2", b"", b"P6\n0 0\n255\n"):
            with self.subTest(data), self.assertRaises(ValueError):
                Picture.of_ppm(data)

    def test_buttons_are_found_with_their_middle(self) -> None:
        picture = painted(400, 200, (Box(20, 30, 100, 32), ORANGE), (Box(200, 100, 120, 40), ORANGE))
        self.assertEqual(picture.buttons(), [Box(20, 30, 100, 32), Box(200, 100, 120, 40)])
        self.assertEqual(picture.buttons()[0].middle, (70, 46))

    def test_bars_ticks_and_what_lies_outside_are_no_buttons(self) -> None:
        picture = painted(400, 200, (Box(20, 30, 300, 6), ORANGE), (Box(20, 60, 14, 14), ORANGE),
                          (Box(300, 100, 100, 32), ORANGE))
        self.assertEqual(picture.buttons(Box(0, 0, 350, 200)), [])

    def test_a_button_that_is_only_an_edge_is_told_from_a_filled_one(self) -> None:
        picture = painted(400, 200, (Box(20, 30, 100, 1), ORANGE), (Box(20, 61, 100, 1), ORANGE),
                          (Box(200, 30, 100, 32), ORANGE))
        self.assertEqual(picture.outlined(Box(0, 0, 400, 200)), [Box(20, 30, 100, 32)])
        self.assertEqual(picture.buttons(), [Box(200, 30, 100, 32)])

    def test_a_close_button_is_a_small_red_disc(self) -> None:
        self.assertEqual(painted(200, 100, (Box(40, 20, 12, 12), RED)).close_button(), (45, 25))
        self.assertIsNone(painted(200, 100, (Box(40, 20, 120, 12), RED)).close_button())
        self.assertIsNone(painted(200, 100, (Box(40, 20, 12, 12), ORANGE)).close_button())
        self.assertIsNone(painted(200, 100, (Box(40, 20, 12, 12), RED)).close_button(Box(60, 0, 100, 100)))

    def test_the_colours_of_the_program_are_told_from_others(self) -> None:
        self.assertTrue(all(map(is_orange, ((255, 178, 24), (255, 137, 20), (255, 126, 23)))))
        self.assertFalse(any(map(is_orange, ((198, 198, 198), (244, 102, 79), (23, 160, 255), (255, 241, 224)))))

    def test_the_chosen_line_of_a_menu_is_told_from_its_name_and_its_bar(self) -> None:
        name, bar, line = Box(500, 100, 200, 16), Box(460, 688, 360, 6), Box(480, 250, 60, 16)
        self.assertEqual(chosen_line(painted(1280, 800, (name, ORANGE), (line, ORANGE), (bar, ORANGE))), 250)
        self.assertIsNone(chosen_line(painted(1280, 800, (name, ORANGE), (bar, ORANGE))))

    def test_a_blank_screen_has_one_shade(self) -> None:
        self.assertEqual(painted(40, 40).shades(), 1)
        self.assertEqual(painted(40, 40, (Box(0, 0, 20, 20), ORANGE)).shades(), 2)

    def test_a_kept_picture_is_a_png(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "p.png"
            painted(40, 30).save(path)
            data = path.read_bytes()
            self.assertEqual((data[:8], data[16:24]), (b"\x89PNG\r\n\x1a\n", b"\0\0\0\x28\0\0\0\x1e"))


class Guest:
    """A machine with one picture on its screen: one that the tests of the look hold, or another."""

    def __init__(self, name: str, picture: Optional[Picture] = None) -> None:
        self.picture = picture or read_png(REFERENCES / f"{name}.png")
        self.options = Options(width=self.picture.width, height=self.picture.height)
        self.clicks: list[tuple[int, int]] = []

    def click(self, x: int, y: int) -> None:
        """Notes the place."""
        self.clicks.append((x, y))

    def look(self) -> Picture:
        """The picture."""
        return self.picture

    def say(self, _: str) -> None:
        """Nothing."""

    def wait(self, what: str, condition: Callable[[], Any], _: float = 0) -> Any:
        """The condition's answer at the second look; Failure when it is none."""
        if not (condition() or condition()):
            raise Failure(what)
        return condition()


def read_png(path: Path) -> Picture:
    """A PNG of 8 bits with red, green and blue, with or without transparency."""
    data, at, packed = path.read_bytes(), 8, b""
    while at < len(data):
        size, kind = int.from_bytes(data[at:at + 4], "big"), data[at + 4:at + 8]
        body = data[at + 8:at + 8 + size]
        if kind == b"IHDR":
            width, height, step = *struct.unpack(">II", body[:8]), {2: 3, 6: 4}[body[9]]
        packed += body if kind == b"IDAT" else b""
        at += 12 + size
    raw, row, above, lines = zlib.decompress(packed), width * step, bytes(width * step), []
    for y in range(height):
        above = unfiltered(raw[y * (row + 1)], bytearray(raw[y * (row + 1) + 1:(y + 1) * (row + 1)]), above, step)
        lines.append(above)
    pixels = bytearray(b"".join(lines))
    if step == 4:
        del pixels[3::4]
    return Picture(width, height, bytes(pixels))


def unfiltered(kind: int, line: bytearray, above: bytes, step: int) -> bytes:
    """A line of a PNG as it was before its filter."""
    if kind == 2:
        return bytes((a + b) & 255 for a, b in zip(line, above))
    for x in range(len(line) if kind else 0):
        left, up = line[x - step] if x >= step else 0, above[x]
        if kind == 4:
            corner = above[x - step] if x >= step else 0
            far = abs(up - corner), abs(left - corner), abs(left + up - 2 * corner)
            guess = left if far[0] <= far[1] and far[0] <= far[2] else up if far[1] <= far[2] else corner
        else:
            guess = left if kind == 1 else (left + up) // 2
        line[x] = (line[x] + guess) & 255
    return bytes(line)


class Windows(unittest.TestCase):
    """What the journeys read off the window, tried on the pictures that hold its look."""

    def test_the_window_is_known_and_what_it_shows(self) -> None:
        guest = Guest("select-ticked")
        window, picture = Window(guest), guest.picture  # type: ignore[arg-type]
        self.assertTrue(window.can_copy(picture) and window.has_disk(picture) and window.has_tick(picture, 8, 3))
        self.assertFalse(window.has_tick(picture, 0) or window.has_tick(picture, 7, 3))
        self.assertFalse(window.is_complete(picture) or window.is_copy_page(picture))

    def test_an_empty_window_offers_nothing(self) -> None:
        guest = Guest("select-no-disk")
        window, picture = Window(guest), guest.picture  # type: ignore[arg-type]
        self.assertFalse(window.can_copy(picture) or window.has_disk(picture))

    def test_a_box_or_a_page_of_a_copy_is_no_first_page(self) -> None:
        for name in ("box-exit", "copy-half", "end-whole"):
            with self.subTest(name), self.assertRaises(Failure):
                Window(Guest(name))  # type: ignore[arg-type]

    def test_only_a_whole_rescue_reads_as_good(self) -> None:
        good = {"end-whole": True, "end-not-whole": False, "end-stopped": False, "end-nothing": False,
                "end-not-confirmed": False, "box-removed": False, "box-no-space": False, "box-exit": False}
        for name, is_good in good.items():
            with self.subTest(name):
                self.assertEqual(MessageBox(Guest(name)).is_good(), is_good)  # type: ignore[arg-type]

    def test_a_window_without_a_box_has_none(self) -> None:
        with self.assertRaises(Failure):
            MessageBox(Guest("select-ticked"))  # type: ignore[arg-type]


class Panels(unittest.TestCase):
    """The session's questions: a white card on dark ground."""

    @staticmethod
    def guest(*parts: tuple[Box, bytes]) -> Guest:
        """A machine that shows a card with these parts."""
        ground, card = (Box(0, 0, 1280, 800), bytes(GROUND)), (Box(340, 214, 600, 371), WHITE)
        return Guest("card", painted(1280, 800, ground, card, *parts))

    @staticmethod
    def frame(top: int, colour: bytes) -> list[tuple[Box, bytes]]:
        """An edge around 64 lines."""
        sides = [(Box(x, top, 1, 64), colour) for x in (376, 903)]
        return [(Box(376, y, 528, 1), colour) for y in (top, top + 63)] + sides

    def test_an_answer_is_chosen_by_its_number(self) -> None:
        info, answers = self.frame(325, bytes((224, 224, 224))), (self.frame(405, EDGE), self.frame(485, EDGE))
        guest = self.guest(*info, *answers[0], *answers[1])
        panel = Panel(guest, "a question")  # type: ignore[arg-type]
        panel.choose(1)
        panel.choose(0)
        self.assertEqual(guest.clicks, [(640, 516), (640, 436)])
        with self.assertRaisesRegex(Failure, "has 2 answers"):
            panel.choose(2)

    def test_the_two_buttons_are_told_from_each_other(self) -> None:
        guest = self.guest((Box(720, 500, 150, 36), ORANGE), *[(Box(560, y, 120, 1), ORANGE) for y in (500, 535)])
        panel = Panel(guest, "a question")  # type: ignore[arg-type]
        panel.press()
        panel.press_other()
        self.assertEqual(guest.clicks, [(795, 518), (620, 518)])

    def test_neither_a_card_beside_the_middle_nor_the_window_is_one(self) -> None:
        for part in ((Box(340, 214, 60, 371), bytes(GROUND)), (Box(80, 55, 1120, 690), WHITE)):
            with self.subTest(part), self.assertRaises(Failure):
                Panel(self.guest(part), "a question")  # type: ignore[arg-type]


FAKE_QEMU = """#!{python}
import signal, socket, sys
path = next(word for word in sys.argv if "/qmp," in word).split(",")[0].removeprefix("unix:")
server = socket.socket(socket.AF_UNIX)
server.bind(path)
server.listen()
file = server.accept()[0].makefile("rwb")
file.write(b'{{"QMP": {{}}}}\\n')
file.flush()
for line in file:
    file.write(b'{{"return": {{}}}}\\n')
    file.flush()
signal.pause()
"""


class Machines(unittest.TestCase):
    """How a computer begins and ends, with something in QEMU's place that answers and does no more."""

    def setUp(self) -> None:
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        path = f"{self.folder}:{os.environ['PATH']}"
        self.enterContext(unittest.mock.patch.dict(os.environ, {"PATH": path}))

    def machine(self, program: str, work: Path) -> Machine:
        """A computer of that program."""
        qemu = self.folder / "qemu-system-x86_64"
        qemu.write_text(program)
        qemu.chmod(0o755)
        return Machine("guest", self.folder / "image", Options(firmware=Firmware("bios")), work, self.folder / "pictures")

    def test_it_runs_in_a_deep_folder_and_ends_whatever_happens(self) -> None:
        for problem in (None, Failure("no window"), KeyboardInterrupt()):
            with self.subTest(problem):
                machine = self.machine(FAKE_QEMU.format(python=sys.executable), self.folder / ("deep" * 40))
                try:
                    with machine:
                        self.assertTrue(machine.runs())
                        if problem:
                            raise problem
                except (Failure, KeyboardInterrupt) as caught:
                    self.assertIs(caught, problem)
                self.assertFalse(machine.runs())

    def test_one_that_does_not_start_is_told_with_its_words(self) -> None:
        with self.assertRaisesRegex(Failure, "no such machine"):
            with self.machine("#!/bin/sh\necho no such machine; exit 1\n", self.folder / "work"):
                pass


class Entries(unittest.TestCase):
    """Files made from a seed."""

    def test_a_seed_gives_the_same_files_and_another_seed_others(self) -> None:
        self.assertEqual(disks.user_files(1, 1, 99), disks.user_files(1, 1, 99))
        self.assertNotEqual(disks.user_files(1, 1, 99), disks.user_files(2, 1, 99))

    def test_an_entry_has_size_and_checksum(self) -> None:
        self.assertEqual(entry_of(b"").sha256[:8], "e3b0c442")
        self.assertNotEqual(entry_of(b"a"), entry_of(b"b"))


if __name__ == "__main__":
    outcome = unittest.main(argv=[sys.argv[0], "-v"], exit=False).result
    if not outcome.wasSuccessful():
        sys.exit(1)
    sys.exit(SKIPPED if outcome.skipped else 0)
