"""Runs a program with limits of time and memory, and tells what it did and whether anything outside changed."""

import contextlib
import hashlib
import os
import resource
import signal
import stat
import subprocess
import threading
import time
from dataclasses import dataclass, field


@dataclass
class Outcome:
    """What came of one run of a program."""

    status: int  # exit status, or minus the signal that ended it
    seconds: float
    peak: int  # resident memory at most, in bytes
    lines: list = field(default_factory=list)
    killed_for: str = ""  # "time" or "memory"

    def told(self, word):
        """The rests of the lines that begin with this word."""
        return [line[len(word) + 1 :] for line in self.lines if line.split(" ", 1)[0] == word]

    def fault(self, patience=5):
        """Why this run is not sound, in one line; empty when it is. `patience`: seconds without events that are no hang."""
        if self.killed_for:
            return f"used more {self.killed_for} than it may"
        if self.status < 0:
            return f"ended by {signal.Signals(-self.status).name}"
        hangs = [gap for gap in self.told("gap") if int(gap.split()[0]) > patience * 1000]
        return f"hang of {hangs[0]}" if hangs else ""


def _resident(pid):
    try:
        with open(f"/proc/{pid}/statm") as file:
            return int(file.read().split()[1]) * resource.getpagesize()
    except (OSError, IndexError, ValueError):
        return 0


def run(command, home, seconds, memory=1 << 30, largest_file=None, kill_after=None):
    """Runs the command with TESSARO_HOME at `home`. `largest_file` makes writes beyond so many bytes fail, as on a full
    disk; `kill_after` ends it by SIGKILL after so many seconds."""
    environment = dict(os.environ, TESSARO_HOME=home, QT_QPA_PLATFORM="offscreen")

    def limits():
        os.setsid()
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if largest_file is not None:
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (largest_file, largest_file))

    start = time.monotonic()
    # What the program tells comes through a pipe: the bound on files would cut off a file of it.
    with subprocess.Popen(
        command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, preexec_fn=limits
    ) as child:
        output = []
        reader = threading.Thread(target=lambda: output.append(child.stdout.read()))
        reader.start()
        outcome = Outcome(0, 0, 0)
        while child.poll() is None:
            outcome.peak = max(outcome.peak, _resident(child.pid))
            passed = time.monotonic() - start
            if kill_after is not None and passed > kill_after:
                break
            if passed > seconds or outcome.peak > memory:
                outcome.killed_for = "time" if passed > seconds else "memory"
                break
            time.sleep(0.02)
        if child.poll() is None:
            os.killpg(child.pid, signal.SIGKILL)
            child.wait()
        reader.join(timeout=5)  # a process that outlived the program may keep the pipe open
        if reader.is_alive():
            with contextlib.suppress(ProcessLookupError):
                os.killpg(child.pid, signal.SIGKILL)
            reader.join()
    outcome.seconds = time.monotonic() - start
    outcome.status = 0 if kill_after is not None and child.returncode == -signal.SIGKILL else child.returncode
    outcome.lines = b"".join(output).decode("utf-8", "replace").splitlines()
    return outcome


def fingerprint(folder):
    """Every file below the folder with a sum of its contents: equal when nothing was changed, made or deleted."""
    found = {}
    for place, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(place, name)
            mode = os.lstat(path).st_mode
            found[path] = stat.S_IFMT(mode)
            if stat.S_ISREG(mode):
                with open(path, "rb") as file:
                    found[path] = hashlib.sha256(file.read()).hexdigest()
    return found
