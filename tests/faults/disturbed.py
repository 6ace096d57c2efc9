"""Runs the program with a call that fails, and looks at all that such a run leaves."""

import collections
import ctypes
import os
import signal
import subprocess
import time

from support.program import clean_environment

PTICK_DYNAMIC = os.environ.get("PTICK_DYNAMIC", "build/dev/tests/ptick_dynamic")
PTICK_THREADED = os.environ.get("PTICK_THREADED", "build/dev/tests/ptick_threaded")
FAULT_PRELOAD = os.environ.get("FAULT_PRELOAD", "build/dev/tests/libfault_preload.so")
LONGEST_RUN = 10  # seconds
PR_SET_CHILD_SUBREAPER = 36

# What a run left: both streams, the status, the key file, how often the fault happened, what should
# not be there.
Run = collections.namedtuple("Run", "out err status script struck mess")


def adopt_orphans():
    """From now on a process that the program leaves becomes a child of this one."""
    ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def is_gone(pid):
    """Whether an orphan has ended; one that was killed may need a moment for it."""
    deadline = time.monotonic() + 5
    while time.monotonic() < deadline:
        if os.waitpid(pid, os.WNOHANG)[0] == pid:
            return True
        time.sleep(0.001)
    os.kill(pid, signal.SIGKILL)
    os.waitpid(pid, 0)
    return False


def living_orphans(own):
    """The children of this process, other than those in `own`, that go on running."""
    with open(f"/proc/self/task/{os.getpid()}/children", encoding="ascii") as file:
        orphans = {int(pid) for pid in file.read().split()} - own
    return [pid for pid in orphans if not is_gone(pid)]


def files_below(folder):
    return {
        os.path.join(place, name) for place, _, names in os.walk(folder) for name in names
    }


class Stage:
    """A folder that disturbed runs happen in, one after the other."""

    def __init__(self, folder, mark, script):
        self.folder = folder
        self.mark = mark
        self.script = os.path.join(folder, script)
        self.own_children = set()  # these may live on
        self.files = files_below(folder)

    def run(self, arguments, fault=None, program=PTICK_DYNAMIC, **environment):
        """One run; `fault` as the preloaded library takes it."""
        if fault:
            environment.update(
                LD_PRELOAD=os.path.abspath(FAULT_PRELOAD),
                PTICK_FAULT=fault,
                PTICK_FAULT_MARK=self.mark,
            )
        process = subprocess.Popen(
            [os.path.abspath(program), *arguments],
            cwd=self.folder,
            env=clean_environment(**environment),
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
        )
        mess = []
        try:
            out, err = process.communicate(timeout=LONGEST_RUN)
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
            mess.append("it did not end")
        return self._look_at(process.returncode, out, err, mess)

    def _look_at(self, status, out, err, mess):
        mess += [f"process {pid} left over" for pid in living_orphans(self.own_children)]
        script = self._take(self.script)
        struck = len(self._take(self.mark) or b"")
        mess += [f"file {name} left over" for name in files_below(self.folder) - self.files]
        return Run(out, err, status, script, struck, mess)

    @staticmethod
    def _take(path):
        """What is in a file, which is removed; None when there is none."""
        try:
            with open(path, "rb") as file:
                text = file.read()
            os.remove(path)
            return text
        except FileNotFoundError:
            return None
