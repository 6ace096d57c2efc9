"""The frame of ptick-fleet: command line, signals, messages, exit status."""

from __future__ import annotations

import asyncio
import contextlib
import os
import signal
import sys
from collections.abc import Sequence

from . import __version__
from .merge_command import merge
from .messages import Messages
from .options import MergeOptions, help_of_merge, parse_merge
from .problems import Trouble, UsageError
from .result_file import ResultFile

TROUBLE = 2
DEADLY = (
    signal.SIGHUP,
    signal.SIGINT,
    signal.SIGQUIT,
    signal.SIGTERM,
    signal.SIGALRM,
    signal.SIGUSR1,
    signal.SIGUSR2,
    signal.SIGXCPU,
    signal.SIGPROF,
    signal.SIGVTALRM,
)


def main(arguments: Sequence[str]) -> None:
    """Ends the process, by a status or by the signal that ended the work."""
    _prepare()
    messages = Messages()
    status = TROUBLE
    try:
        status = _run(arguments, messages)
    except UsageError as error:
        messages.tell(str(error))
        messages.tell_help()
    except Trouble as trouble:
        messages.tell_trouble(trouble)
    except MemoryError:
        messages.tell("out of memory")
    # At once: threads that wait for a disk, and what libraries do at their end, are of no use now.
    os._exit(status)


def _prepare() -> None:
    # A standard stream that is closed can neither be read nor written: no file takes its number.
    for descriptor in range(3):
        try:
            os.fstat(descriptor)
        except OSError:
            os.set_inheritable(os.open("/", os.O_PATH), True)
    # A closed pipe, and a file beyond the limit of sizes, are errors of the write.
    for each in (signal.SIGPIPE, signal.SIGXFSZ):
        signal.signal(each, signal.SIG_IGN)


def _run(arguments: Sequence[str], messages: Messages) -> int:
    options = parse_merge(arguments)
    if isinstance(options, MergeOptions):
        if options.is_quiet:
            messages.set_quiet()
        return _until_signal(options, messages)
    text = help_of_merge() if options == "help" else f"ptick-fleet {__version__}\n"
    output = ResultFile(None)
    output.write(text.encode())
    output.finish()
    return 0


def _until_signal(options: MergeOptions, messages: Messages) -> int:
    """Merges. A signal ends the merge, and then the process by its usual effect."""
    received: list[signal.Signals] = []

    async def work() -> int:
        task = asyncio.create_task(merge(options, messages))

        def end(number: signal.Signals) -> None:
            if not received:
                task.cancel()
            received.append(number)

        for number in DEADLY:
            if signal.getsignal(number) != signal.SIG_IGN:
                asyncio.get_running_loop().add_signal_handler(number, end, number)
        return await task

    try:
        return asyncio.new_event_loop().run_until_complete(work())
    except asyncio.CancelledError:
        return TROUBLE
    finally:
        if received:
            _end_by(received[0])


def _end_by(number: signal.Signals) -> None:
    signal.signal(number, signal.SIG_DFL)
    with contextlib.suppress(ValueError):
        signal.pthread_sigmask(signal.SIG_UNBLOCK, [number])
    os.kill(os.getpid(), number)
    os._exit(128 + number)


if __name__ == "__main__":
    main(sys.argv[1:])
