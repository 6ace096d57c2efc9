"""Does a step of a merge: runs ptick-merge, on this machine or on a worker of a cluster.

The functions travel to workers by value, with what they refer to in this module and in step.py.
"""

from __future__ import annotations

import contextlib
import errno
import itertools
import os
import pickle
import re
import shutil
import subprocess
import time
import zlib
from typing import IO, Any

from .step import Outcome, Step, failed_outcome, outcome_of

# Of one process: the runs of ptick-merge by the keys of their steps, and the beginnings of keys of
# which none may be run any more.
Running = dict[str, Any]

COPIED_AT_ONCE = 1 << 20
LEFT_OUT = re.compile(rb"^ptick-merge: ([0-9,]+) of [0-9,]+ profiles left out\n\Z", re.MULTILINE)


def new_running() -> Running:
    return {"processes": {}, "cancelled": set()}


def run_step(step: Step, running: Running, place: str = "") -> Outcome:
    """Does a step. What goes wrong with it is in the outcome; nothing is raised but by faults of
    this program."""
    begin = time.monotonic()
    outcome = outcome_of("done")
    outcome["lost"] = [
        at
        for at, given in enumerate(step["inputs"])
        if given["file"] is not None and not _is_whole(given["file"], given["size"])
    ]
    if outcome["lost"]:
        outcome["kind"] = "lost"
    else:
        try:
            _merge(step, running, outcome)
        except OSError as error:
            outcome = failed_outcome(_reason(error))
        except MemoryError:
            outcome = failed_outcome("out of memory")
    outcome["seconds"] = time.monotonic() - begin
    outcome["place"] = place
    return outcome


def cancel_steps(keys: str, running: Running) -> int:
    """Ends the steps whose keys begin with a text, and sees to it that no other such step runs
    here. Returns how many were ended."""
    running["cancelled"].add(keys)
    ended = 0
    for key, process in list(running["processes"].items()):
        if key.startswith(keys):
            process.kill()
            ended += 1
    return ended


def _reason(error: OSError) -> str:
    reason = error.strerror or str(error)
    return f"{error.filename}: {reason}" if error.filename else reason


def _is_whole(file: str, size: int) -> bool:
    try:
        return os.path.getsize(file) == size
    except OSError:
        return False


def _merge(step: Step, running: Running, outcome: Outcome) -> None:
    program = shutil.which(step["program"])
    if program is None:
        raise OSError(errno.ENOENT, "not found; it is in the package ptick", step["program"])
    # What is handed over lies in memory and has no name: nothing of it is left whatever happens.
    with contextlib.ExitStack() as files:
        pieces: list[int] = []
        names = _memory_file(_names(step, pieces, files), files)
        messages = _memory_file(b"", files)
        with subprocess.Popen(
            _command(program, step["keeps_going"]),
            stdin=names,
            stdout=subprocess.PIPE,
            stderr=messages,
            pass_fds=pieces,
            cwd=step["folder"],
        ) as process:
            try:
                _register(step["key"], process, running)
                assert process.stdout is not None
                _take_output(step, process.stdout, outcome)
            except BaseException:
                process.kill()
                raise
            finally:
                running["processes"].pop(step["key"], None)
        told = os.pread(messages, os.fstat(messages).st_size, 0)
    _judge(process.returncode, told, outcome)


def _register(key: str, process: subprocess.Popen[bytes], running: Running) -> None:
    running["processes"][key] = process
    # A copy, for other threads cancel while this one looks.
    if any(key.startswith(keys) for keys in running["cancelled"].copy()):
        process.kill()


def _command(program: str, keeps_going: bool) -> list[str]:
    command = [program, "--files0-from=-"] + ["--keep-going"] * keeps_going
    # A worker may be killed; what it runs is to end with it.
    setpriv = shutil.which("setpriv")
    return [setpriv, "--pdeathsig", "KILL", "--", *command] if setpriv else command


def _memory_file(data: bytes, files: contextlib.ExitStack) -> int:
    descriptor = os.memfd_create("ptick-fleet", os.MFD_CLOEXEC)
    files.callback(os.close, descriptor)
    view = memoryview(data)
    while view:
        written = os.write(descriptor, view)
        view = view[written:]
    os.lseek(descriptor, 0, os.SEEK_SET)
    return descriptor


def _names(step: Step, pieces: list[int], files: contextlib.ExitStack) -> bytes:
    """The names that ptick-merge is given, each ended by a zero byte. Files in memory that it is to
    have are added to the pieces."""
    if step["names"] is not None:
        names = zlib.decompress(step["names"])
        # Where all profiles of a group are bad, those of others may be good. An empty one is always
        # good, and adds nothing.
        return names + b"/dev/null\0" if step["keeps_going"] else names
    names = b""
    # A merge knows no bounds of files, so that results which follow each other can be one file.
    for is_file, inputs in itertools.groupby(step["inputs"], lambda each: each["file"] is not None):
        if is_file:
            names += b"".join(os.fsencode(each["file"] or "") + b"\0" for each in inputs)
        else:
            pieces.append(_memory_file(b"".join(each["data"] or b"" for each in inputs), files))
            names += b"/proc/self/fd/%d\0" % pieces[-1]
    return names


def _take_output(step: Step, output: IO[bytes], outcome: Outcome) -> None:
    data = output.read(step["spill_size"] + 1)
    outcome["size"] = len(data)
    if len(data) <= step["spill_size"]:
        outcome["data"] = data
        return
    if step["spill_folder"] is None:
        reason = f"a result has more than {step['spill_size']:,} bytes; --work-dir has room for it"
        raise OSError(errno.EFBIG, reason)
    # No two runs of a step ever write the same file.
    name = os.path.join(step["spill_folder"], step["key"] + os.urandom(8).hex())
    outcome["file"] = name
    descriptor = os.open(name, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o666)
    try:
        with os.fdopen(descriptor, "wb") as file:
            file.write(data)
            while data := output.read(COPIED_AT_ONCE):
                file.write(data)
                outcome["size"] += len(data)
            file.flush()
            os.fsync(file.fileno())
    except BaseException:
        with contextlib.suppress(OSError):
            os.unlink(name)
        raise


def _judge(status: int, told: bytes, outcome: Outcome) -> None:
    """What the end of ptick-merge means. 1 is done, with inputs left out."""
    if status not in (0, 1):
        if outcome["file"] is not None:
            os.unlink(outcome["file"])
        outcome["data"] = outcome["file"] = None
        outcome["kind"] = "trouble" if status == 2 and told else "failed"
        outcome["messages"] = told
        outcome["reason"] = _end_of(status, told)
        return
    count = LEFT_OUT.search(told)
    if count is not None:
        outcome["left_out"] = int(count[1].replace(b",", b""))
        told = told[: count.start()]
    outcome["messages"] = told


def _end_of(status: int, told: bytes) -> str:
    if status < 0:
        return f"ptick-merge was ended by signal {-status}"
    last = os.fsdecode(told).strip().rpartition("\n")[2]
    return f"ptick-merge ended with status {status}" + (f": {last}" if last else "")


def run_step_on_worker(pickled: bytes) -> Outcome:
    """Does a step on a worker of a Dask cluster."""
    worker, running = _worker()
    step: Step = pickle.loads(pickled)
    return run_step(step, running, worker.address)


def cancel_on_worker(keys: str) -> int:
    """Ends the steps there whose keys begin with a text."""
    return cancel_steps(keys, _worker()[1])


def _worker() -> tuple[Any, Running]:
    """The worker that this runs on, and what it runs for this program."""
    import distributed

    worker: Any = distributed.get_worker()
    if not hasattr(worker, "ptick_fleet_running"):
        worker.ptick_fleet_running = new_running()
    return worker, worker.ptick_fleet_running
