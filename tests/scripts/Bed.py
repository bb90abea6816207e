"""A clone of the commands among made-up tools, for their tests.

Each tool writes its call to the file "calls" before it does anything, so a test can
say that nothing was done. A tool that is not made up is the machine's own.
"""
import os
import pty
import shutil
import subprocess
import tempfile
import unittest

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), "../.."))
USER = 65534  # an ordinary user that every system has

TOOLS = {
    # Every package is there but those that the file "missing" names, until apt-get has run.
    "dpkg-query": """for last; do :; done
grep -qx -- "$last" "$BED/missing" 2>/dev/null || echo installed""",
    "apt-get": """note "$@"
case " $* " in
    *' --print-uris '*)
        echo "'http://mirror/a_1_all.deb' a_1_all.deb 200000000 SHA256:1"
        echo "'http://mirror/b_1_all.deb' b_1_all.deb 115400000 SHA256:2"
        exit ;;
    *' APT::Status-Fd=3 '*) ;;
    *) exit 1 ;;
esac
echo 'a wall of text'
echo 'dlstatus:1:37.5:Retrieving file 1 of 2 (9s remaining)' >&3
case " $* " in
    *' install '*)
        [ ! -e "$BED/apt-fails" ] || { echo 'E: no such package'; exit 100; }
        echo 'pmstatus:a:80:Unpacking a' >&3
        rm -f "$BED/missing" ;;
esac""",
    "apt-cache": """printf 'Package: a\\nInstalled-Size: 900000\\n\\nPackage: b\\nInstalled-Size: 90000\\n'""",
    "sudo": """note "$@"
exec "$@" """,
    "cmake": """note "$@"
case $1 in
    --preset) echo '-- configured' ;;
    --build)
        [ ! -e "$BED/waits" ] || read -r _ <"$BED/waits"
        printf '[1/2] Building one\\n[2/2] Linking two\\n'
        [ ! -e "$BED/build-fails" ] || { echo 'one.cpp:1: error: no such thing'; exit 1; }
        mkdir -p build/release/bin build/release/tests/rescue_demo
        cp "$BED/program" build/release/bin/TarnwickMacPE
        cp "$BED/program" build/release/tests/rescue_demo/rescue_demo ;;
esac""",
    "ctest": """note "$@" """,
}
PROGRAM = """#!/usr/bin/env bash
echo "program of user $(id -u) at HOME=$HOME with ${QT_MESSAGE_PATTERN:-no pattern}"
[ -z "${BED_WRITES:-}" ] || echo saved >'/Volumes/KEEPSAKE/saved.txt'
exit "${BED_STATUS:-0}"
"""


class CBed(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="tarnwick-scripts.", dir="/var/tmp")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        os.chmod(self.folder, 0o755)
        self.clone = os.path.join(self.folder, "clone")
        shutil.copytree(os.path.join(ROOT, "scripts"), os.path.join(self.clone, "scripts"))
        os.makedirs(os.path.join(self.clone, "tests/support"))
        for name in ("sandbox", "with-display"):
            shutil.copy(os.path.join(ROOT, "tests/support", name), os.path.join(self.clone, "tests/support"))
        self.tools = os.path.join(self.folder, "tools")
        os.mkdir(self.tools)
        for name, text in TOOLS.items():
            self.tool(name, text)
        self.write("program", PROGRAM, 0o755)
        self.write("calls", "", 0o666)

    def write(self, name, text, mode=0o644):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(path, mode)
        return path

    def tool(self, name, text):
        head = '#!/usr/bin/env bash\nnote() { printf "%s\\n" "${0##*/} $*" >>"$BED/calls"; }\n'
        self.write(os.path.join("tools", name), head + text + "\n", 0o755)

    def no_home(self):
        """The sample's volumes are filled with nothing, which takes no time."""
        self.write("clone/scripts/sample/make-home", "#!/bin/sh\n", 0o755)

    def calls(self):
        with open(os.path.join(self.folder, "calls"), encoding="utf-8") as file:
            return file.read().splitlines()

    def environment(self, more):
        mine = {key: value for key, value in os.environ.items()
                if not key.startswith(("SUDO_", "QT_", "TARNWICK_")) and key not in ("DISPLAY", "XAUTHORITY")}
        mine.update(BED=self.folder, PATH=self.tools + ":" + os.environ["PATH"], TARNWICK_PROGRESS_SECONDS="1",
                    LC_ALL="C.UTF-8")
        mine.update(more)
        return mine

    def run_it(self, *command, user=None, inside=None, **more):
        """Runs a command in the clone; inside is what it is put behind, in a change-root for example."""
        # Unlike a time-out of Python's it ends what the command has started, too.
        words = ["timeout", "--kill-after=5", "100", *(inside or ()), *(self.as_user() if user else ()), *command]
        return subprocess.run(words, cwd=self.clone, env=self.environment(more), text=True, timeout=120,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def on_terminal(self, *command, answer="", **more):
        """Returns what the command shows on a terminal, where the answer was typed, and its status."""
        main, other = pty.openpty()
        process = subprocess.Popen(command, cwd=self.clone, env=self.environment({"TERM": "xterm", **more}),
                                   stdin=other, stdout=other, stderr=other, start_new_session=True)
        os.close(other)
        os.write(main, answer.encode())
        shown = b""
        while True:
            try:
                piece = os.read(main, 4096)
            except OSError:  # nobody has the terminal open any more
                break
            if not piece:
                break
            shown += piece
        os.close(main)
        return shown.decode(), process.wait(timeout=120)

    @staticmethod
    def as_user():
        return ("setpriv", f"--reuid={USER}", f"--regid={USER}", "--clear-groups")

    def need_root(self):
        if os.getuid() != 0:
            self.skipTest("root is needed, to be another user")

    def give(self, *names):
        for name in names:
            subprocess.run(["chown", "-R", f"{USER}:{USER}", os.path.join(self.folder, name)], check=True)

    def need_view(self, *before):
        run = self.run_it(*before, "tests/support/sandbox", "--", "true")
        if run.returncode != 0:
            self.skipTest("no private view of the file system can be made here: " + run.stderr.strip())
