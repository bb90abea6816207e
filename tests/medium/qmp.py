"""QEMU's control socket: commands with their answers, and the events between them."""

from __future__ import annotations

import json
import socket
from typing import Any, Optional


class QmpError(RuntimeError):
    """QEMU refused a command."""


class Qmp:
    """One connection; every call waits for its answer, at most `seconds`."""

    def __init__(self, path: str, seconds: float) -> None:
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(seconds)
        try:
            self._socket.connect(path)
        except OSError:
            self._socket.close()
            raise
        self._file = self._socket.makefile("rwb")
        self.events: list[dict[str, Any]] = []
        self._read()
        self.call("qmp_capabilities")

    def _read(self) -> dict[str, Any]:
        line = self._file.readline()
        if not line:
            raise QmpError("QEMU has ended")
        answer: dict[str, Any] = json.loads(line)
        return answer

    def call(self, command: str, **arguments: Any) -> Any:
        """The command's return value; raises QmpError with QEMU's words when it is refused."""
        self._file.write(json.dumps({"execute": command, "arguments": arguments}).encode() + b"\n")
        self._file.flush()
        while True:
            answer = self._read()
            if "event" in answer:
                self.events.append(answer)
            elif "error" in answer:
                raise QmpError(f"{command}: {answer['error'].get('desc')}")
            else:
                return answer.get("return")

    def has_event(self, name: str, device: Optional[str] = None) -> bool:
        """Whether such an event came; asks QEMU once so that what waits is read."""
        self.call("query-status")
        return any(e["event"] == name and device in (None, e.get("data", {}).get("device")) for e in self.events)

    def drain(self) -> None:
        """Reads what QEMU said before it ended."""
        try:
            while True:
                answer = self._read()
                if "event" in answer:
                    self.events.append(answer)
        except (QmpError, OSError, ValueError):
            pass

    def close(self) -> None:
        """Ends the connection."""
        self._file.close()
        self._socket.close()
