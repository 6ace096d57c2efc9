"""Runs a program on a pseudo-terminal and talks to it, without ever sleeping."""

import fcntl
import os
import pty
import select
import signal
import struct
import termios

from support.program import clean_environment


def lead_session(terminal, events, keyboard, arguments, folder, environment):
    """The leader of the terminal's session: starts the program as its foreground job and tells what
    becomes of it, as a shell would. Does not return."""
    os.setsid()
    fcntl.ioctl(terminal, termios.TIOCSCTTY, 0)
    signal.signal(signal.SIGTTOU, signal.SIG_IGN)
    signal.signal(signal.SIGHUP, signal.SIG_IGN)
    job = os.fork()
    if job == 0:
        os.setpgid(0, 0)
        os.tcsetpgrp(terminal, os.getpgrp())
        signal.signal(signal.SIGTTOU, signal.SIG_DFL)
        signal.signal(signal.SIGHUP, signal.SIG_DFL)
        os.dup2(terminal if keyboard else os.open(os.devnull, os.O_RDONLY), 0)
        os.dup2(terminal, 1)
        os.dup2(terminal, 2)
        os.chdir(folder)
        os.execve(arguments[0], arguments, clean_environment(**{"COLUMNS": None, **environment}))
    os.write(events, b"%d\n" % job)
    while True:
        _, status = os.waitpid(job, os.WUNTRACED)
        if os.WIFSTOPPED(status):
            os.write(events, b"stopped\n")
        else:
            code = -os.WTERMSIG(status) if os.WIFSIGNALED(status) else os.WEXITSTATUS(status)
            os.write(events, b"ended %d\n" % code)
            os._exit(0)


class Terminal:
    """A program whose standard streams are a terminal of the given size."""

    bare = True  # bytes come through as the program writes them

    def __init__(self, arguments, folder, rows, columns, keyboard=True, **environment):
        self.output = b""
        self.master, self.slave = pty.openpty()
        self.set_size(rows, columns)
        if self.bare:
            attributes = self.attributes()
            attributes[1] &= ~termios.OPOST
            termios.tcsetattr(self.slave, termios.TCSANOW, attributes)
        self.before = self.attributes()
        self.events, events = os.pipe()
        self.session = os.fork()
        if self.session == 0:
            try:
                os.close(self.master)  # the terminal hangs up when this test ends
                lead_session(self.slave, events, keyboard, arguments, folder, environment)
            finally:
                os._exit(127)  # whatever fails here, this is no second run of the tests
        os.close(events)
        self.pid = int(self.event())

    def event(self):
        """What the session tells next: the process number at first, then "stopped" and "ended N"."""
        text = b""
        while not text.endswith(b"\n"):
            readable, _, _ = select.select([self.events], [], [], 20)
            if not readable:
                os.kill(self.pid, signal.SIGKILL)
                raise AssertionError(f"nothing happened; output so far {self.output!r}")
            text += os.read(self.events, 1)
        return text.decode().strip()

    def set_size(self, rows, columns):
        fcntl.ioctl(self.slave, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))

    def received(self, data):
        """Takes what the program has written."""
        self.output += data

    def attributes(self):
        return termios.tcgetattr(self.slave)

    def wait_for(self, text, count=1):
        """Reads until `text` was printed `count` times in all; fails when nothing more comes."""
        while self.output.count(text) < count:
            self._read(f"{text!r} ({count} times)")

    def wait_for_key_wait(self):
        """Waits until the program asks for a key: the terminal no longer collects lines."""
        while self.attributes()[3] & termios.ICANON:
            # Nothing tells of the change, so the state is asked for again.
            if select.select([self.events], [], [], 0.001)[0]:
                raise AssertionError(f"{self.event()} without a key; output {self.output!r}")

    def press(self, keys):
        os.write(self.master, keys)

    def abandon(self):
        """Ends a program that did not do as it should."""
        os.kill(self.pid, signal.SIGKILL)
        self.end()

    def interrupt(self, number):
        os.kill(self.pid, number)

    def end(self):
        """Reads what is left and returns the exit status, negative for a signal."""
        ended = False
        while True:
            readable, _, _ = select.select([self.master, self.events], [], [], 0 if ended else 20)
            if self.master in readable:
                self.received(os.read(self.master, 65536))
            elif self.events in readable:
                status = int(self.event().removeprefix("ended "))
                ended = True
                os.waitpid(self.session, 0)
                os.close(self.events)
                self.events = self.master
            else:
                break
        self.after = self.attributes()
        os.close(self.master)
        os.close(self.slave)
        if not ended:
            raise AssertionError(f"no end; output so far {self.output!r}")
        return status

    def _read(self, what):
        readable, _, _ = select.select([self.master], [], [], 20)
        if not readable:
            os.kill(self.pid, signal.SIGKILL)
            raise AssertionError(f"no {what} in {self.output!r}")
        self.received(os.read(self.master, 65536))
