"""Runs a program on a pseudo-terminal and talks to it, without ever sleeping."""

import fcntl
import os
import pty
import select
import signal
import struct
import termios

from support.program import clean_environment


class Terminal:
    """A program whose standard streams are a terminal of the given size."""

    def __init__(self, arguments, folder, rows, columns, keyboard=True, **environment):
        self.output = b""
        self.master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
        attributes = termios.tcgetattr(slave)
        attributes[1] &= ~termios.OPOST  # bytes come through as the program writes them
        termios.tcsetattr(slave, termios.TCSANOW, attributes)
        self.slave = slave
        self.pid = os.fork()
        if self.pid == 0:
            os.setsid()
            fcntl.ioctl(slave, termios.TIOCSCTTY, 0)
            if keyboard:
                os.dup2(slave, 0)
            else:
                os.dup2(os.open(os.devnull, os.O_RDONLY), 0)
            os.dup2(slave, 1)
            os.dup2(slave, 2)
            os.chdir(folder)
            os.execve(arguments[0], arguments, clean_environment(COLUMNS=None, **environment))

    def attributes(self):
        return termios.tcgetattr(self.slave)

    def wait_for(self, text, count=1):
        """Reads until `text` was printed `count` times in all; fails when nothing more comes."""
        while self.output.count(text) < count:
            self._read(f"{text!r} ({count} times)")

    def wait_for_key_wait(self):
        """Waits until the program asks for a key: the terminal no longer collects lines."""
        poll = select.poll()
        while self.attributes()[3] & termios.ICANON:
            poll.poll(1)  # nothing to wait on; the state is asked for again

    def press(self, keys):
        os.write(self.master, keys)

    def interrupt(self, number):
        os.kill(self.pid, number)

    def end(self):
        """Reads what is left and returns the exit status, negative for a signal."""
        os.set_blocking(self.master, False)
        while True:
            pid, status = os.waitpid(self.pid, os.WNOHANG)
            readable, _, _ = select.select([self.master], [], [], 0.01)
            if readable:
                self.output += os.read(self.master, 65536)
            elif pid:
                break
        os.close(self.master)
        os.close(self.slave)
        if os.WIFSIGNALED(status):
            return -os.WTERMSIG(status)
        return os.WEXITSTATUS(status)

    def _read(self, what):
        readable, _, _ = select.select([self.master], [], [], 20)
        if not readable:
            os.kill(self.pid, signal.SIGKILL)
            raise AssertionError(f"no {what} in {self.output!r}")
        self.output += os.read(self.master, 65536)
