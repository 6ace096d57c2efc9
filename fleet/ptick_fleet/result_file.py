"""The result that a user asked for: a file that is whole or as it was, or standard output."""

from __future__ import annotations

import errno
import os
import re
import stat

from . import terminal
from .problems import Trouble

MOST_LINKS = 40
STANDARD_OUTPUT = 1


class ResultFile:
    """Open from its making on, so that what is wrong with it is known at once. Raises Trouble."""

    def __init__(self, file: str | None) -> None:
        self._temporary: str | None = None
        self._target = ""
        self._old: os.stat_result | None = None
        self._owned = False
        self._descriptor = STANDARD_OUTPUT
        self._is_closed = False
        self._name = "standard output"
        if file is not None and file != "-":
            self._name = file
            try:
                self._open(file)
            except OSError as error:
                raise Trouble.of(error, file) from None
        self._is_on_terminal = terminal.is_terminal(self._descriptor)

    def write(self, data: bytes) -> None:
        """Whole lines. A reader who wants no more gets no more."""
        if self._is_on_terminal:
            data = terminal.terminal_text(data, kept="\n\t")
        view = memoryview(data)
        try:
            while view and not self._is_closed:
                written = os.write(self._descriptor, view)
                view = view[written:]
        except BrokenPipeError:
            self._is_closed = True
        except OSError as error:
            raise Trouble.of(error, self._name) from None

    def finish(self) -> None:
        """Puts the file in its place."""
        try:
            if self._temporary is not None:
                self._replace()
            else:
                # Some file systems tell only when a descriptor is closed that there was no room.
                os.close(os.dup(self._descriptor))
        except OSError as error:
            raise Trouble.of(error, self._name) from None
        self.discard()

    def discard(self) -> None:
        """Leaves a file as it was, unless it was finished."""
        if self._temporary is not None:
            try:
                os.unlink(self._temporary)
            except OSError:
                pass
            self._temporary = None
        if self._owned:
            self._owned = False
            os.close(self._descriptor)

    def _own(self, descriptor: int) -> None:
        self._descriptor = descriptor
        self._owned = True

    def _open(self, file: str) -> None:
        path = file
        for _ in range(MOST_LINKS + 1):
            folder, name = os.path.split(path)
            folder = folder or "."
            if name and _lists_own_descriptors(folder):
                self._own(_duplicate(name))
                return
            try:
                status = os.lstat(path)
            except FileNotFoundError:
                self._make_temporary(folder, name, None)
                return
            if stat.S_ISREG(status.st_mode):
                self._make_temporary(folder, name, status)
                return
            if not stat.S_ISLNK(status.st_mode) or os.path.realpath(folder).startswith("/proc/"):
                self._own(os.open(path, os.O_WRONLY | os.O_NOCTTY | os.O_TRUNC))
                return
            path = os.path.join(folder, os.readlink(path))
        raise OSError(errno.ELOOP, os.strerror(errno.ELOOP))

    def _make_temporary(self, folder: str, name: str, old: os.stat_result | None) -> None:
        if not name:
            error = errno.EISDIR if folder != "." else errno.ENOENT
            raise OSError(error, os.strerror(error))
        # That its folder could be written does not mean that a protected file may go.
        path = os.path.join(folder, name)
        if old is not None and not os.access(path, os.W_OK, effective_ids=True):
            raise OSError(errno.EACCES, os.strerror(errno.EACCES))
        # The folder stays the same one although the process goes elsewhere.
        folder = os.path.realpath(folder)
        temporary = os.path.join(folder, f".ptick-fleet.{os.urandom(8).hex()}")
        # Nobody may read it who may not read the old one.
        mode = 0o666 if old is None else old.st_mode & 0o666
        self._own(os.open(temporary, os.O_WRONLY | os.O_CREAT | os.O_EXCL, mode))
        self._temporary = temporary
        self._target = os.path.join(folder, name)
        self._old = old

    def _replace(self) -> None:
        assert self._temporary is not None
        if self._old is not None:
            _take_after(self._descriptor, self._old)
        try:
            os.fsync(self._descriptor)
        except OSError as error:
            if error.errno not in (errno.EINVAL, errno.ENOSYS, errno.ENOTSUP):
                raise
        os.rename(self._temporary, self._target)
        self._temporary = None


def _lists_own_descriptors(folder: str) -> bool:
    """What the entries of such a folder lead to is known by their numbers only."""
    return os.path.realpath(folder) == f"/proc/{os.getpid()}/fd"


def _duplicate(number: str) -> int:
    if not re.fullmatch("[0-9]{1,9}", number):
        raise OSError(errno.ENOENT, os.strerror(errno.ENOENT))
    return os.dup(int(number))


def _take_after(descriptor: int, old: os.stat_result) -> None:
    """The owner, the group, both if the system lets, and the mode of another file."""
    own = os.fstat(descriptor)
    kept = 0o7777
    if (own.st_uid, own.st_gid) != (old.st_uid, old.st_gid):
        try:
            os.fchown(descriptor, old.st_uid, old.st_gid)
        except OSError:
            # The group at least. Nobody else's rights are lent to whoever runs the file, though.
            kept = 0o777
            try:
                os.fchown(descriptor, -1, old.st_gid)
            except OSError:
                pass
    os.fchmod(descriptor, old.st_mode & kept)
