"""Boots a computer in QEMU, looks at its screen, and works its mouse, keyboard and disks.

Everything waits for a condition: a line on the first serial port, pixels, an event of QEMU.
The time-outs are generous, because without KVM a boot takes a minute, and can be stretched
with TARNWICK_MEDIUM_SLOW (a factor).
"""

from __future__ import annotations

import ctypes
import json
import os
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any, Callable, Optional, TypeVar

from picture import Picture
from qmp import Qmp, QmpError

T = TypeVar("T")
OVMF = Path("/usr/share/OVMF")
SLOW = float(os.environ.get("TARNWICK_MEDIUM_SLOW", "1"))
SKIPPED = 77
# Between two looks at a condition, not a wait for one.
LOOK_SECONDS = 0.1


class Failure(AssertionError):
    """What a test waited for did not come, or is not as it has to be."""


@dataclass(frozen=True)
class Firmware:
    """A way to start: code and variables of the firmware; a BIOS has none."""

    name: str
    code: str = ""
    variables: str = ""

    @property
    def files(self) -> list[Path]:
        """The files that have to be installed for it."""
        return [OVMF / name for name in (self.code, self.variables) if name]


SECURE = Firmware("sb", "OVMF_CODE_4M.secboot.fd", "OVMF_VARS_4M.ms.fd")
UEFI = Firmware("efi", "OVMF_CODE_4M.fd", "OVMF_VARS_4M.fd")
UEFI_32 = Firmware("ia32", "OVMF32_CODE_4M.secboot.fd", "OVMF32_VARS_4M.fd")
BIOS = Firmware("bios")


@dataclass(frozen=True)
class Disk:
    """A disk that is there from the start. What is `kept` is written to, else it is thrown away at the end."""

    path: Path
    bus: str = "sata"  # sata, nvme, usb
    kept: bool = True
    model: str = ""
    bad_sectors: tuple[int, ...] = ()


@dataclass
class Options:
    """How the computer is made."""

    firmware: Firmware = SECURE
    memory_mib: int = 2048
    width: int = 1280
    height: int = 800
    screen: bool = True
    tablet: bool = True
    keyboard: bool = True
    disks: list[Disk] = field(default_factory=list)
    words: list[str] = field(default_factory=lambda: ["tarnwick.shell"])


def can_use_kvm() -> bool:
    """Whether the processor's own virtualisation is there and may be used."""
    flags = Path("/proc/cpuinfo").read_text(errors="replace")
    return os.access("/dev/kvm", os.W_OK) and bool(re.search(r"^flags\s*:.*\b(vmx|svm)\b", flags, re.M))


def _die_with_parent() -> None:
    """Runs in the child: it is killed when the test is."""
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGKILL)


class Machine:
    """One computer, from power on until the `with` block is left. It boots `image` from USB."""

    def __init__(self, name: str, image: Path, options: Options, work: Path, pictures: Path) -> None:
        self.name, self.options, self._image = name, options, image
        self._work, self._pictures = work / name, pictures
        self._sockets = Path()
        self._shots = len(list(pictures.glob("*.png"))) if pictures.exists() else 0
        self._begin = time.monotonic()
        self._mark = 0
        self._nodes: dict[str, str] = {}
        self._listed: list[str] = []
        self._shell: Optional[socket.socket] = None
        self._process: Optional[subprocess.Popen[bytes]] = None

    # --- Beginning and end ---

    def __enter__(self) -> "Machine":
        shutil.rmtree(self._work, ignore_errors=True)
        self._work.mkdir(parents=True)
        self._pictures.mkdir(parents=True, exist_ok=True)
        # The name of a socket has room for about 100 letters, and a build folder may be deep.
        self._sockets = Path(tempfile.mkdtemp(prefix="tarnwick-"))
        with (self._work / "qemu.log").open("wb") as log:
            self._process = subprocess.Popen(self._command(), stdout=log, stderr=log, stdin=subprocess.DEVNULL,
                                             preexec_fn=_die_with_parent)
        self._begin = time.monotonic()
        try:
            self._qmp = self.wait("QEMU's control socket", self._control, 30)
        except BaseException:
            self._end()
            raise
        return self

    def _control(self) -> Optional[Qmp]:
        """The control socket as soon as QEMU listens on it."""
        try:
            return Qmp(str(self._sockets / "qmp"), 120 * SLOW)
        except (FileNotFoundError, ConnectionRefusedError):
            return None

    def __exit__(self, kind: Any, *_: Any) -> None:
        try:
            if kind is not None and self.runs():
                self.shoot("failed")
        except (QmpError, OSError, ValueError):
            pass
        finally:
            self._end()

    def _end(self) -> None:
        """Ends QEMU and leaves its logs beside the pictures."""
        if self._shell:
            self._shell.close()
        if self._process and self._process.poll() is None:
            self._process.terminate()
            try:
                self._process.wait(20)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        shutil.rmtree(self._sockets, ignore_errors=True)
        for name in ("serial.log", "qemu.log"):
            if (self._work / name).exists():
                shutil.copy(self._work / name, self._pictures / f"{self.name}-{name}")

    def cut_power(self) -> None:
        """Ends the computer at once, as when the plug is pulled."""
        if self._process:
            self._process.kill()
            self._process.wait()

    def runs(self) -> bool:
        """Whether QEMU is there."""
        return self._process is not None and self._process.poll() is None

    def _command(self) -> list[str]:
        kvm = can_use_kvm()
        secure = "secboot" in self.options.firmware.code
        command = ["qemu-system-x86_64", "-display", "none", "-no-reboot", "-nic", "none", "-smp", "2",
                   "-accel", "kvm" if kvm else "tcg,thread=multi", "-cpu", "host" if kvm else "max",
                   "-m", str(self.options.memory_mib), "-M", "q35,smm=on" if secure else "q35",
                   "-serial", f"file:{self._work}/serial.log",
                   "-serial", f"unix:{self._sockets}/shell,server=on,wait=off",
                   "-qmp", f"unix:{self._sockets}/qmp,server=on,wait=off", "-device", "qemu-xhci,id=xhci,p2=8,p3=8"]
        command += self._screen() + self._firmware()
        for word in self.options.words:
            command += ["-smbios", f"type=11,value={word}"]
        if self.options.tablet:
            command += ["-device", "usb-tablet,bus=xhci.0"]
        if self.options.keyboard:
            command += ["-device", "usb-kbd,bus=xhci.0"]
        command += self._drive("boot", Disk(self._image, "usb", kept=False), 0, ",bootindex=1")
        for number, disk in enumerate(self.options.disks):
            command += self._drive(f"disk{number}", disk, number)
        return command

    def _screen(self) -> list[str]:
        if not self.options.screen:
            return ["-vga", "none"]
        size = f"xres={self.options.width},yres={self.options.height}"
        return ["-vga", "none", "-device", f"VGA,{size},edid=on,vgamem_mb=64"]

    def _firmware(self) -> list[str]:
        firmware = self.options.firmware
        if not firmware.code:
            return []
        variables = self._work / "variables.fd"
        shutil.copy(OVMF / firmware.variables, variables)
        command = ["-drive", f"if=pflash,format=raw,unit=0,readonly=on,file={OVMF / firmware.code}",
                   "-drive", f"if=pflash,format=raw,unit=1,file={variables}"]
        if "secboot" in firmware.code:
            command += ["-global", "driver=cfi.pflash01,property=secure,value=on",
                        "-global", "ICH9-LPC.disable_s3=1"]
        return command

    def _drive(self, name: str, disk: Disk, number: int, more: str = "") -> list[str]:
        device = {"sata": f"ide-hd,bus=ide.{number}", "nvme": f"nvme,serial={name}",
                  "usb": f"usb-storage,bus=xhci.0,serial={name}"}
        model = f",model={disk.model}" if disk.model and disk.bus == "sata" else ""
        device_option = f"{device[disk.bus]},id={name},drive={name}-node{model}{more}"
        if disk.kept:
            node = json.dumps(self._node(f"{name}-node", disk))
            return ["-blockdev", node, "-device", device_option]
        drive = f"if=none,id={name}-node,format=raw,snapshot=on,file={disk.path}"
        return ["-drive", drive, "-device", device_option]

    @staticmethod
    def _node(node: str, disk: Disk) -> dict[str, Any]:
        """The description of a disk's file, with errors where its sectors are bad."""
        file: dict[str, Any] = {"driver": "file", "filename": str(disk.path)}
        if disk.bad_sectors:
            errors = [{"event": "none", "iotype": "read", "errno": 5, "sector": sector, "once": False}
                      for sector in disk.bad_sectors]
            file = {"driver": "blkdebug", "inject-error": errors, "image": file}
        return {"driver": "raw", "node-name": node, "file": file}

    # --- Waiting ---

    def say(self, text: str) -> None:
        """A line for whoever reads the test's output, with the seconds since power on."""
        print(f"[{time.monotonic() - self._begin:6.1f}] {text}", flush=True)

    def seconds(self) -> float:
        """Since power on."""
        return time.monotonic() - self._begin

    def wait(self, what: str, condition: Callable[[], Optional[T]], seconds: float = 240) -> T:
        """The first answer of `condition` that counts as true; raises Failure when none comes in time."""
        end = time.monotonic() + seconds * SLOW
        while True:
            answer = condition()
            if answer:
                return answer
            if self._process and self._process.poll() is not None:
                raise Failure(f"QEMU ended while waiting for {what}: {self._tail()}")
            if time.monotonic() > end:
                raise Failure(f"no {what} within {seconds * SLOW:.0f} s. Last lines: {self._tail()}")
            time.sleep(LOOK_SECONDS)

    def wait_gone(self, what: str, condition: Callable[[], bool], seconds: float = 60) -> None:
        """Waits for a condition, or for the end of the computer, which is as good."""
        try:
            self.wait(what, condition, seconds)
        except (Failure, QmpError, OSError):
            if self.runs():
                raise

    def _tail(self) -> str:
        log = self._work / "qemu.log"
        own = log.read_text(errors="replace")[-600:] if log.exists() else ""
        return f"{self.serial()[-1200:]}\n{own}"

    def serial(self) -> str:
        """All that came on the first serial port so far, without the terminal's control codes."""
        path = self._work / "serial.log"
        text = path.read_bytes().decode(errors="replace") if path.exists() else ""
        return re.sub(r"\x1b\[[0-9;?=]*[A-Za-z]", "", text).replace("\r", "")

    def lines(self) -> list[str]:
        """The state lines of the medium so far: the serial port's, or the guest's own list when that has more."""
        heard = [found.rstrip() for found in re.findall(r"tarnwick: [^\n]*(?=\n)", self.serial())]
        return heard if len(heard) >= len(self._listed) else self._listed

    def _ask_for_lines(self) -> None:
        """Reads the guest's list through its shell: what is said while a terminal closes can miss the serial port."""
        if "tarnwick.shell" not in self.options.words or "tarnwick: session" not in self.serial():
            return
        try:
            code, text = self.shell_code("cat /run/tarnwick/session.log", 20)
        except (Failure, OSError):
            return
        if code == 0:
            self._listed = [line.rstrip() for line in text.splitlines() if line.startswith("tarnwick: ")]

    def wait_line(self, pattern: str, seconds: float = 240, after: int = 0) -> re.Match[str]:
        """The first state line, from number `after` on, of which the pattern matches the whole."""
        whole = re.compile(r"tarnwick: " + pattern)
        asked = time.monotonic()

        def look() -> Optional[re.Match[str]]:
            nonlocal asked
            if time.monotonic() > asked + 8:
                self._ask_for_lines()
                asked = time.monotonic()
            return next((m for m in map(whole.fullmatch, self.lines()[after:]) if m), None)

        match = self.wait(f"line “{pattern}”", look, seconds)
        self.say(match.group(0))
        return match

    def wait_reset(self, seconds: float = 120) -> str:
        """Waits until the guest has restarted or switched off; the reason in QEMU's words."""
        end = time.monotonic() + seconds * SLOW
        while self.runs():
            if time.monotonic() > end:
                raise Failure(f"the computer does not end: {self._tail()}")
            try:
                self._qmp.call("query-status")
            except (QmpError, OSError):
                break
            time.sleep(LOOK_SECONDS)
        if self._process:
            self._process.wait(30)
        self._qmp.drain()
        reasons = [e["data"].get("reason", "") for e in self._qmp.events if e["event"] == "SHUTDOWN"]
        self.say(f"the computer has ended: {reasons}")
        return str(reasons[-1]) if reasons else ""

    # --- Screen, mouse, keyboard ---

    def look(self) -> Picture:
        """The screen as it is."""
        path = self._work / "screen.ppm"
        self._qmp.call("screendump", filename=str(path))
        return Picture.of_ppm(path.read_bytes())

    def shoot(self, what: str) -> Picture:
        """The same, kept as a PNG that is numbered in the order of the test."""
        picture = self.look()
        self._shots += 1
        path = self._pictures / f"{self._shots:02}-{what}.png"
        picture.save(path)
        self.say(f"picture {path.name}")
        return picture

    def _input(self, *events: dict[str, Any]) -> None:
        self._qmp.call("input-send-event", events=list(events))

    def move(self, x: int, y: int) -> None:
        """Puts the pointer on a pixel of the screen."""
        scale = {"x": 32767 / (self.options.width - 1), "y": 32767 / (self.options.height - 1)}
        self._input(*({"type": "abs", "data": {"axis": axis, "value": round(value * scale[axis])}}
                      for axis, value in (("x", x), ("y", y))))

    def click(self, x: int, y: int) -> None:
        """Presses and releases the left button on a pixel of the screen."""
        self.move(x, y)
        for down in (True, False):
            self._input({"type": "btn", "data": {"down": down, "button": "left"}})

    def press(self, *keys: str) -> None:
        """Presses keys together, by QEMU's names ("ret", "tab", "shift")."""
        self._qmp.call("send-key", keys=[{"type": "qcode", "data": key} for key in keys])

    def type(self, text: str) -> None:
        """Types small letters and digits, each after the one before has been released."""
        for letter in text:
            for down in (True, False):
                key = {"type": "qcode", "data": letter}
                self._input({"type": "key", "data": {"down": down, "key": key}})

    # --- Disks that come and go ---

    def plug(self, name: str, disk: Disk) -> None:
        """Plugs a USB disk in."""
        self._qmp.call("blockdev-add", **self._node(f"{name}-node", disk))
        self._qmp.call("device_add", driver="usb-storage", id=name, drive=f"{name}-node", bus="xhci.0", serial=name,
                       removable=True)
        self._nodes[name] = f"{name}-node"
        self.say(f"plugged {name} in")

    def pull(self, name: str) -> None:
        """Pulls a USB disk out, whatever is written to it, and waits until it is gone."""
        self._qmp.call("device_del", id=name)
        self.wait(f"end of {name}", lambda: self._qmp.has_event("DEVICE_DELETED", name), 60)
        node = self._nodes.pop(name, None)
        if node:
            self._qmp.call("blockdev-del", **{"node-name": node})
        self.say(f"pulled {name} out")

    def slow_down(self, name: str, bytes_per_second: int) -> None:
        """Lets a disk read and write only so much from now on; 1 is as good as hanging, 0 ends it."""
        rate = {key: 0 for key in ("bps", "iops", "iops_rd", "iops_wr")}
        # What reads and writes is the disk within the USB device.
        device = f"{name}/{name}.0/legacy[0]" if name in self._nodes else name
        self._qmp.call("block_set_io_throttle", id=device, bps_rd=bytes_per_second, bps_wr=bytes_per_second, **rate)

    # --- The guest's own word ---

    def shell(self, command: str, seconds: float = 120) -> str:
        """What a command prints in the guest; raises Failure when it does not end well."""
        code, text = self.shell_code(command, seconds)
        if code != 0:
            raise Failure(f"“{command}” gave {code}: {text}")
        return text

    def shell_code(self, command: str, seconds: float = 120) -> tuple[int, str]:
        """Exit code and output of a command in the root shell of the second serial port."""
        if self._shell is None:
            self._connect_shell()
        self._mark += 1
        mark = f"MARK{self._mark}"
        # What it prints begins behind a word of its own: a slow guest may still echo what it is told.
        begin = f"printf '\\n%s%s\\n' BEGIN {self._mark}"
        line = f"{begin}; {{ {command}\n}} 2>&1; printf '\\n%s%s %d\\n' MARK {self._mark} $?\n"
        return self._converse(line, re.compile(rf"\nBEGIN{self._mark}\n(.*?)\n{mark} (\d+)\n", re.S), command, seconds)

    def _converse(self, line: str, end: re.Pattern[str], what: str, seconds: float) -> tuple[int, str]:
        assert self._shell is not None
        self._shell.sendall(line.encode())
        text = ""

        def listen() -> Optional[re.Match[str]]:
            nonlocal text
            assert self._shell is not None
            try:
                text += self._shell.recv(65536).decode(errors="replace").replace("\r", "")
            except BlockingIOError:
                pass
            return end.search(text)

        match = self.wait(f"answer to “{what}”", listen, seconds)
        return int(match.group(2)), match.group(1).strip("\n")

    def _connect_shell(self) -> None:
        """Connects to the shell and asks until it answers, without echo and prompt."""
        self._shell = socket.socket(socket.AF_UNIX)
        self._shell.connect(str(self._sockets / "shell"))
        self._shell.setblocking(False)
        text = ""
        asked = 0.0

        def answers() -> bool:
            nonlocal text, asked
            assert self._shell is not None
            if time.monotonic() - asked > 5:
                asked = time.monotonic()
                self._shell.sendall(b"stty -echo; PS1= PS2=; unset PROMPT_COMMAND; printf '%s%s\\n' RE ADY\n")
            try:
                text += self._shell.recv(65536).decode(errors="replace")
            except BlockingIOError:
                pass
            return "READY" in text

        self.wait("the shell on the second serial port", answers)
        self._converse("printf '\\n%s%s %d\\n' MARK 0 0\n", re.compile(r"\A(.*)\nMARK0 (\d+)\n", re.S), "hello", 60)
