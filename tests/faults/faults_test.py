"""No call that fails can break a run: it does what it would have done, or what is documented for
that failure, or it ends with a status and says why. PTICK_FAULTS=all tries every place of every
form; otherwise two forms represent all."""

import collections
import errno
import fcntl
import os
import re
import signal
import tempfile
import threading
import unittest

from faults.disturbed import PTICK_DYNAMIC, PTICK_THREADED, Stage, adopt_orphans
from faults.forms import FILES, FORMS, KEY_FILE, sizes_missing
from support.ports import PortTest

SHORT = 0
FILE_FORMS = ("source", "keys")
COMMAND_FORMS = ("sizes", "keys")
COMMAND_CALLS = ("clone", "pipe2")
THREAD_FORMS = ("lines, threads", "merge, threads")
PORT_FORMS = ("ports", "monitor on")

# `error` is what the call gives, `then` "+" when all after it fail too; where it is `harmless`, the
# run must not be different at all. `quick` are the forms that represent all.
Fault = collections.namedtuple("Fault", "kind error then harmless quick")

FAULTS = [
    Fault("malloc", errno.ENOMEM, "", False, ("source", "keys", *THREAD_FORMS)),
    Fault("malloc", errno.ENOMEM, "+", False, ("all, verbose", "ports", *THREAD_FORMS)),
    Fault("thread", errno.EAGAIN, "", True, THREAD_FORMS),
    Fault("thread", errno.EAGAIN, "+", True, THREAD_FORMS),
    Fault("read", errno.EIO, "", False, FILE_FORMS),
    Fault("read", errno.EINTR, "", True, ("source", "sizes")),
    Fault("read", SHORT, "", True, FILE_FORMS),
    Fault("pread", errno.EIO, "", False, ("lines, threads",)),
    Fault("pread", errno.EINTR, "", True, ("lines, threads",)),
    Fault("pread", SHORT, "", True, ("lines, threads",)),
    Fault("write", errno.EIO, "", False, FILE_FORMS),
    Fault("write", errno.ENOSPC, "", False, FILE_FORMS),
    Fault("write", errno.ENOSPC, "+", False, FILE_FORMS),
    Fault("write", errno.EINTR, "", True, FILE_FORMS),
    Fault("write", errno.EAGAIN, "", True, FILE_FORMS),
    Fault("write", SHORT, "", True, FILE_FORMS),
    Fault("open", errno.EACCES, "", False, ("source", "ports")),
    Fault("open", errno.EMFILE, "", False, ("source", "ports")),
    Fault("open", errno.EMFILE, "+", False, ("merge", "monitor on")),
    Fault("clone", errno.EAGAIN, "", False, COMMAND_FORMS),
    Fault("clone", errno.ENOMEM, "+", False, COMMAND_FORMS),
    Fault("pipe2", errno.EMFILE, "", False, COMMAND_FORMS),
    Fault("pipe2", errno.EMFILE, "+", False, COMMAND_FORMS),
    Fault("signalfd", errno.EMFILE, "", True, COMMAND_FORMS),
    Fault("poll", errno.EINTR, "", True, ("keys", "monitor on")),
    Fault("poll", errno.ENOMEM, "", True, ("keys", "monitor on")),
    Fault("poll", errno.ENOMEM, "+", True, ("sizes", "keys", "monitor on")),
    Fault("socket", errno.EMFILE, "", False, PORT_FORMS),
    Fault("connect", errno.ECONNREFUSED, "", False, PORT_FORMS),
    Fault("connect", errno.EAGAIN, "", False, PORT_FORMS),
    Fault("getsockopt", errno.ENOBUFS, "", False, PORT_FORMS),
    Fault("send", errno.ENOBUFS, "", False, PORT_FORMS),
    Fault("send", errno.ECONNREFUSED, "", False, PORT_FORMS),
    Fault("send", errno.EPIPE, "", False, PORT_FORMS),
    Fault("send", errno.EINTR, "", True, PORT_FORMS),
    Fault("recv", errno.ECONNRESET, "", False, ("monitor on", "monitor off")),
    Fault("recv", errno.EINTR, "", True, ("monitor on", "monitor off")),
    Fault("fstat", errno.EIO, "", False, ("source", "ports")),
    Fault("opendir", errno.ENOMEM, "", False, ("ports",)),
    Fault("readdir", errno.EIO, "", False, ("ports",)),
]


def without_time(script):
    """A key file without the moment of its creation."""
    return script and re.sub(rb"created at .{8} .{11} ,", b"created at TIME ,", script)


def is_same(clean, run):
    return (run.out, run.err, run.status, without_time(run.script)) == (
        clean.out,
        clean.err,
        clean.status,
        without_time(clean.script),
    )


def says_why(fault, run):
    """A run that failed has said so, unless nothing can be written any more."""
    mute = fault.kind == "write" and (fault.then == "+" or not run.out)
    return run.status > 0 and (mute or re.search(rb"(?m)^ptick: .+$", run.err))


def complaint(fault, form, clean, run):
    """What is wrong with a disturbed run; empty when nothing is."""
    if run.mess:
        return "; ".join(run.mess)
    if is_same(clean, run):
        return ""
    if fault.harmless:
        return "it differs"
    if run.status < 0:
        return f"signal {-run.status} ended it"
    if fault.kind in COMMAND_CALLS and form.may_give == sizes_missing:
        return "" if sizes_missing(clean, run) else "the report is not the rest of it"
    if says_why(fault, run) or form.may_give(clean, run):
        return ""
    return "it failed in silence" if run.status else "it is wrong in silence"


class Faults(PortTest):
    def setUp(self):
        super().setUp()
        adopt_orphans()
        for name, text in FILES.items():
            self.write(name, text)
        os.chmod(os.path.join(self.folder, "bin", "size"), 0o755)
        self.listeners = [self.listener(port) for port in ("5", "7")]
        for listener in self.listeners:
            fcntl.fcntl(listener.stdout, fcntl.F_SETPIPE_SZ, 1 << 20)  # for all that they will tell
        marks = tempfile.TemporaryDirectory(prefix="ptick-test-")
        self.addCleanup(marks.cleanup)
        self.stage = Stage(self.folder, os.path.join(marks.name, "struck"), KEY_FILE)
        self.stage.own_children = {listener.pid for listener in self.listeners}

    def run_form(self, form, fault=None):
        environment = {
            "MAVRO_RUNTIME_DIR": self.runtime,
            "PATH": os.path.join(self.folder, "bin") + ":" + os.environ["PATH"],
        }
        environment.update(form.environment)
        program = PTICK_DYNAMIC
        if form.threads:
            program = PTICK_THREADED
            environment.update(PTICK_TEST_THREADS=str(form.threads), PTICK_TEST_BLOCK="60")
        return self.stage.run(form.arguments, fault, program, **environment)

    def disturb(self, fault, name):
        """Lets the fault happen in every place of a form, one after the other; returns in how many
        places it did."""
        form = FORMS[name]
        clean = self.run_form(form)
        place = 0
        while True:
            setting = f"{fault.kind}:{fault.error}:{place + 1}{fault.then}"
            run = self.run_form(form, setting)
            wrong = complaint(fault, form, clean, run)
            self.assertFalse(wrong, f"{setting} in {name} {form.arguments}: {wrong}\n{run}")
            if not run.struck:
                return place
            place += 1

    def test_no_failing_call_breaks_a_run(self):
        for fault in FAULTS:
            every = os.environ.get("PTICK_FAULTS") == "all"
            with self.subTest(fault=f"{fault.kind}:{fault.error}{fault.then}"):
                places = {}
                for name in FORMS if every else fault.quick:
                    with self.subTest(form=name):
                        places[name] = self.disturb(fault, name)
                if every:
                    print(f"{fault.kind}:{fault.error}{fault.then}", sum(places.values()), "places")
                missed = [name for name in fault.quick if places.get(name) == 0]
                self.assertFalse(missed, "it never happened here")

    def test_a_wait_that_fails_is_not_tried_again_at_once(self):
        pause = 0.4
        for name in ("size", "dcopy"):
            slow = self.write(f"slow/{name}", f"#!/bin/sh\nsleep {pause}\necho waited\n")
            os.chmod(slow, 0o755)
            self.stage.files.add(slow)
        slow = {"PATH": os.path.join(self.folder, "slow") + ":" + os.environ["PATH"]}
        listener = self.listeners[0]
        for name, environment in (("sizes", slow), ("keys", slow), ("monitor on", {})):
            with self.subTest(form=name):
                listener.send_signal(signal.SIGSTOP)
                go_on = threading.Timer(pause, listener.send_signal, [signal.SIGCONT])
                go_on.start()
                form = FORMS[name]._replace(environment=environment)
                run = self.run_form(form, f"poll:{errno.ENOMEM}:1+")
                go_on.join()
                self.assertEqual(0, run.status, run)
                self.assertIn(run.struck, range(1, 300))


if __name__ == "__main__":
    unittest.main()
