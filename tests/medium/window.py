"""The program's window and boxes on the guest's screen: where they are, what they show, and clicks on them.

The window has a fixed size and layout, and stands in the middle of the screen.
"""

from __future__ import annotations

from typing import Callable, Optional

from picture import Box, Colour, Picture, is_green, is_orange, near
from vm import Failure, Machine

WIDTH, HEIGHT = 1120, 690
# On a screen that is not as wide the window is as wide as that, and has a bar below.
SCROLL_BAR = 10
TITLE = (248, 248, 248)
WHITE = (255, 255, 255)
BUTTON_OFF = (198, 198, 198)
LINE = (224, 224, 224)
GROUND = (46, 46, 48)
CHOICE_EDGE = (198, 198, 198)
# Places in the window.
CLOSE = (16, 21)
ROW, ROW_HEIGHT, TICK = 183, 30, 70
ARROW = 53
DROP = (1032, 135)
DISK, DISK_HEIGHT = 175, 30
STICK_PICTURE = (905, 395)
COMPLETE = (839, 652)
COPY = (985, 652)


class Window:
    """The program's window; made when it can be seen."""

    def __init__(self, machine: Machine, seconds: float = 120) -> None:
        self._machine = machine
        options = machine.options
        small = options.width < WIDTH
        self._left = max(options.width - WIDTH, 0) // 2
        self._top = (options.height - HEIGHT - (SCROLL_BAR if small else 0)) // 2
        machine.wait("the window in the middle of the screen", lambda: self.is_shown(machine.look()), seconds)
        machine.say("the window is shown")

    def at(self, picture: Picture, place: tuple[int, int]) -> Colour:
        """The colour at a place of the window."""
        return picture.at(self._left + place[0], self._top + place[1])

    def is_shown(self, picture: Picture) -> bool:
        """Whether title bar, close button, page and Copy button are where they belong, with dark ground around."""
        button = self.at(picture, COPY)
        around = [picture.at(x, y) for x, y in ((self._left // 2, 400), (picture.width - self._left // 2, 400))]
        close = picture.close_button() or (0, 0)
        return (abs(close[0] - self._left - CLOSE[0]) <= 2 and abs(close[1] - self._top - CLOSE[1]) <= 2
                and all(near(self.at(picture, (x, 20)), TITLE) for x in (120, 300, 800, 1000))
                and all(near(self.at(picture, (x, 60)), WHITE) for x in (5, 300, 1000))
                and all(near(self.at(picture, place), LINE) for place in ((30, 400), (754, 400)))
                and (near(button, BUTTON_OFF) or is_orange(button))
                and (self._left == 0 or all(max(colour) <= 60 for colour in around)))

    def click(self, place: tuple[int, int]) -> None:
        """Clicks on a place of the window."""
        self._machine.click(self._left + place[0], self._top + place[1])

    def wait(self, what: str, condition: Callable[[Picture], bool], seconds: float = 90) -> Picture:
        """The first picture of which the condition is true."""

        def look() -> Optional[Picture]:
            picture = self._machine.look()
            return picture if condition(picture) else None

        return self._machine.wait(what, look, seconds)

    # --- The tree ---

    def has_tick(self, picture: Picture, row: int, depth: int = 0) -> bool:
        """Whether a row's box is filled."""
        return is_orange(self.at(picture, (TICK - 5 + 20 * depth, ROW + ROW_HEIGHT * row - 4)))

    def has_row(self, picture: Picture, row: int, depth: int = 0) -> bool:
        """Whether a row is there: its box has an edge."""
        y = ROW + ROW_HEIGHT * row
        return any(not near(self.at(picture, (x + 20 * depth, y)), WHITE) for x in range(TICK - 8, TICK - 4))

    def rows(self, picture: Picture) -> int:
        """How many volumes the tree shows while none of them is open."""
        count = 0
        while count < 14 and self.has_row(picture, count):
            count += 1
        return count

    def tick(self, row: int) -> None:
        """Ticks a volume and waits until its box is filled."""
        self.click((TICK, ROW + ROW_HEIGHT * row))
        self.wait(f"tick in row {row}", lambda picture: self.has_tick(picture, row))

    # --- The disk and the copy ---

    def has_disk(self, picture: Picture) -> bool:
        """Whether a destination is chosen: the stick's picture has its colour."""
        return is_orange(self.at(picture, STICK_PICTURE))

    def choose_disk(self, row: int = 0) -> None:
        """Opens the list of disks, takes one by its row, and waits until the list is gone."""
        def is_open(picture: Picture) -> bool:
            # The list covers the upper part of the stick's picture.
            return near(self.at(picture, (922, 300)), WHITE)

        self.click(DROP)
        self.wait("the list of disks", is_open)
        self._machine.shoot("list-of-disks")
        self.click((900, DISK + DISK_HEIGHT * row))
        self.wait("the chosen disk", lambda picture: self.has_disk(picture) and not is_open(picture))

    def is_complete(self, picture: Picture) -> bool:
        """Whether "Complete rescue" is ticked."""
        return is_orange(self.at(picture, (COMPLETE[0] - 5, COMPLETE[1] - 4)))

    def can_copy(self, picture: Picture) -> bool:
        """Whether the Copy button is on."""
        return is_orange(self.at(picture, COPY))

    def copy(self) -> None:
        """Presses Copy as soon as it can be pressed."""
        self.wait("Copy to be on", self.can_copy)
        self.click(COPY)
        self._machine.say("pressed Copy")

    def is_copy_page(self, picture: Picture) -> bool:
        """Whether the page with the bar is shown, with or without a box over it: no arrow between the two sides."""
        left, right = self.at(picture, (609, 400)), self.at(picture, (754, 400))
        return not near(left, LINE) and not near(right, LINE)

    def bar(self, picture: Picture) -> int:
        """How many pixels of the copy's bar are filled, of 860."""
        return sum(is_orange(self.at(picture, (x, 450))) for x in range(131, 991))

    def leave(self) -> None:
        """Presses the title bar's close button and answers the question with yes."""
        self.click(CLOSE)
        box = MessageBox(self._machine)
        self._machine.shoot("question-to-leave")
        box.press(0)


class MessageBox:
    """A box over the window or alone on the screen; made when it can be seen."""

    def __init__(self, machine: Machine, what: str = "a box", seconds: float = 240) -> None:
        self._machine = machine
        middle = machine.options.width // 2, machine.options.height // 2
        self._area = Box(max(middle[0] - 330, 0), max(middle[1] - 280, 0), 660, 560)
        self._close = (0, 0)
        self.picture = self._settled(what, seconds)

    def _settled(self, what: str, seconds: float) -> Picture:
        """The first picture with a box that is the same a moment later: a box does not come at one stroke."""
        last: Optional[bytes] = None

        def look() -> Optional[Picture]:
            nonlocal last
            picture = self._machine.look()
            if not self._is_box(picture):
                return None
            self._close = picture.close_button(self._area) or (0, 0)
            before, last = last, self._words(picture)
            return picture if before == last else None

        return self._machine.wait(what, look, seconds)

    def _is_box(self, picture: Picture) -> bool:
        """Whether a title bar's close button and an orange button stand in the middle of the screen."""
        area = self._area
        inside = picture.close_button(area)
        return inside is not None and bool(picture.buttons(area) or picture.outlined(area))

    def is_good(self) -> bool:
        """Whether the green mark stands before its words that says that all is whole and on the disk."""
        left, top = self._close
        places = ((left + x, top + y) for y in range(100, 200) for x in range(20, 420))
        return sum(is_green(self.picture.at(*place)) for place in places) >= 40

    def press(self, button: int) -> None:
        """Presses a filled button by its number from the top left (an outlined one where there is no other)."""
        buttons = self.picture.buttons(self._area) or self.picture.outlined(self._area)
        if button >= len(buttons):
            raise Failure(f"the box has {len(buttons)} buttons")
        before = self._words(self.picture)
        self._machine.click(*buttons[button].middle)
        self._machine.say("answered the box")
        self._machine.wait_gone("the box to go", lambda: self._words(self._machine.look()) != before)

    def _words(self, picture: Picture) -> bytes:
        """The box's sign and what stands between it and the buttons."""
        left, top = self._close
        return b"".join(picture.row(left, top + y, 440) for y in range(40, 220))


class Panel:
    """A question of the session: a white card in the middle of a dark ground; made when it can be seen."""

    def __init__(self, machine: Machine, what: str, seconds: float = 120) -> None:
        self._machine = machine
        self.picture = machine.wait(what, lambda: self._shown(machine.look()), seconds)

    @staticmethod
    def _shown(picture: Picture) -> Optional[Picture]:
        """The picture, when it shows the card in the middle and nothing else around."""
        middle = picture.width // 2
        edges = [(20, 20), (picture.width - 20, 20), (20, picture.height - 20), (middle, 20)]
        # The program's window is wider.
        edges += [(middle + x, picture.height // 2) for x in (-400, 400)]
        is_card = all(near(picture.at(x, picture.height // 2), WHITE) for x in (middle - 290, middle + 290))
        return picture if is_card and all(near(picture.at(*place), GROUND) for place in edges) else None

    def press(self) -> None:
        """Presses the filled button."""
        buttons = self.picture.buttons()
        if len(buttons) != 1:
            raise Failure(f"the question has {len(buttons)} filled buttons instead of one")
        self._click(buttons[0].middle)

    def press_other(self) -> None:
        """Presses the button that has an edge alone."""
        buttons = self.picture.outlined(Box(0, 0, self.picture.width, self.picture.height))
        if len(buttons) != 1:
            raise Failure(f"the question has {len(buttons)} buttons with an edge instead of one")
        self._click(buttons[0].middle)

    def choose(self, answer: int) -> None:
        """Presses one of several answers in frames, by its number from the top."""
        middle = self.picture.width // 2
        edges = [y for y in range(self.picture.height)
                 if all(near(self.picture.at(middle + x, y), CHOICE_EDGE, 4) for x in range(-200, 200, 10))]
        if len(edges) < 2 * answer + 2:
            raise Failure(f"the question has {len(edges) // 2} answers")
        self._click((middle, (edges[2 * answer] + edges[2 * answer + 1]) // 2))

    def _click(self, place: tuple[int, int]) -> None:
        self._machine.click(*place)
        self._machine.say("answered the question")
