"""Steps that several stories take, each until the screen shows what comes of it."""

from __future__ import annotations

from pathlib import Path

from journey import check
from menu import Menu
from vm import Disk, Machine
from window import MessageBox, Panel, Window


def choose_language(machine: Machine, line: int) -> None:
    """Takes a line of the menu; 0 is the first."""
    menu = Menu(machine)
    menu.down(line)
    machine.shoot("menu")
    menu.take()


def unlock(machine: Machine, keys: str) -> None:
    """Types a password, by the American names of its keys, where the session asks for it."""
    machine.wait_line(r"asks password .*")
    Panel(machine, "the question for the password")
    machine.shoot("password")
    machine.type(keys)
    machine.wait("the button that unlocks", lambda: machine.look().buttons(), 60)
    machine.shoot("password-typed")
    machine.press("ret")


def tick_all(machine: Machine, window: Window, volumes: int) -> None:
    """Ticks every volume of the tree, which has to be that many."""
    shown = window.rows(machine.shoot("volumes"))
    check(shown == volumes, f"the tree shows {shown} volumes instead of {volumes}")
    for row in range(volumes):
        window.tick(row)


def plug_stick(machine: Machine, window: Window, stick: Path, name: str = "stick") -> None:
    """Plugs a stick called STICK in, and waits until the window has taken it as the destination."""
    before = len(machine.lines())
    machine.plug(name, Disk(stick, "usb"))
    machine.wait_line(r"volume \S+ \S+ usb -> STICK", after=before)
    window.wait("the stick in the window", window.has_disk)


def copy(machine: Machine, window: Window, good: bool = True) -> None:
    """Copies, holds whether the box at the end says that all is whole, and leaves the window."""
    window.copy()
    box = MessageBox(machine, "the box at the end", 400)
    machine.shoot("end")
    check(box.is_good() == good, f"the box at the end says that all is {'not ' if good else ''}whole")
    box.press(0)
    window.leave()
    machine.wait_line("program ended 0")


def end(machine: Machine) -> None:
    """Answers the session's last question with a restart."""
    machine.wait_line(r"asks end.*")
    panel = Panel(machine, "the question at the end")
    machine.shoot("restart-or-off")
    panel.press()
    reason = machine.wait_reset()
    check(reason == "guest-reset", f"the computer did not restart: {reason}")
