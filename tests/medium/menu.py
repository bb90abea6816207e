"""GRUB's menu on the guest's screen: which line is chosen, and the keys that choose another."""

from __future__ import annotations

import time
from typing import Optional

from picture import Picture, is_orange
from vm import Machine

# The menu's lines are between its name above and its bar below, in parts of the screen's height.
TOP, BOTTOM = 0.2, 0.84
# While GRUB draws the firmware may miss a key, which is pressed again then.
KEY_SECONDS = 5
LINE_PIXELS = 12


def chosen_line(picture: Picture) -> Optional[int]:
    """Where the letters of the chosen line begin, in pixels from the top; None where no menu is shown."""
    middle = picture.width // 2
    for y in range(int(picture.height * TOP), int(picture.height * BOTTOM)):
        if any(is_orange(picture.at(x, y)) for x in range(middle - 180, middle + 180)):
            return y
    return None


class Menu:
    """The menu; made when it can be seen. It waits ten seconds for a key, and then no more."""

    def __init__(self, machine: Machine) -> None:
        self._machine = machine
        self._line = machine.wait("GRUB's menu", lambda: chosen_line(machine.look()), 120)

    def down(self, lines: int) -> None:
        """Chooses a line further down, and waits for each on the way."""
        for _ in range(lines):
            self._press("down", "the next line of the menu")

    def open(self) -> None:
        """Takes a line that leads to another menu, and waits for that."""
        self._press("ret", "the menu behind it")

    def take(self) -> None:
        """Takes the chosen line, and waits until the menu is gone."""
        self._press("ret", "the end of the menu", is_end=True)

    def _press(self, key: str, what: str, is_end: bool = False) -> None:
        """Presses a key until another line is chosen, or at the end none."""
        before, pressed = self._line, 0.0

        def has_changed() -> bool:
            nonlocal pressed
            line = chosen_line(self._machine.look())
            # Half drawn letters begin further down.
            is_same = line is not None and abs(line - before) < LINE_PIXELS
            if is_same and time.monotonic() > pressed + KEY_SECONDS:
                self._machine.press(key)
                pressed = time.monotonic()
            if line is None or is_same:
                return is_end and line is None
            self._line = line
            return not is_end

        self._machine.wait(what, has_changed, 60)
