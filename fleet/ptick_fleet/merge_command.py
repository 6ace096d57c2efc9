"""ptick-fleet merge."""

from __future__ import annotations

import asyncio
import contextlib
import os

from .account import BEFORE_FIRST, BETWEEN, Account
from .attempts import Attempts, Task
from .engine import Engine
from .groups import cut_into_groups
from .local_engine import LocalEngine
from .messages import Messages
from .options import MergeOptions
from .problems import LostInputs, Trouble
from .result_file import ResultFile
from .step import Input, Outcome, Step
from .tree import Actions, MergeTree, Node
from .work_folder import WorkFolder

DONE, TOLD = 0, 1

# Results up to these sizes go through the engine: with a folder for larger ones, and without.
SPILL_SIZE = 1 << 20
MOST_WITHOUT_FOLDER = 1 << 28

# The memory that a step takes for each byte of its inputs: the bytes themselves, as long as they
# are no files, and the table of their keys.
MEMORY_OF_A_BYTE = 3

COPIED_AT_ONCE = 1 << 20


async def merge(options: MergeOptions, messages: Messages) -> int:
    """The exit status. Raises Trouble; nothing is left then."""
    result = ResultFile(options.output)
    try:
        return await _merge_into(result, options, messages)
    finally:
        messages.erase()
        result.discard()


async def _merge_into(result: ResultFile, options: MergeOptions, messages: Messages) -> int:
    run = os.urandom(6).hex()
    engine = await _engine(options)
    folder = None
    try:
        if options.scheduler is None or options.work_folder is not None:
            folder = WorkFolder(options.work_folder, run)
        command = _Merge(options, engine, run, folder)
        merged = await _watched(engine, command, messages)
        messages.erase()
        command.check_left(messages)
        await asyncio.to_thread(_write, merged, result)
        result.finish()
        return command.tell_end(messages)
    finally:
        await engine.close(run + ".")
        if folder is not None:
            await folder.remove()


async def _engine(options: MergeOptions) -> Engine:
    if options.scheduler is None:
        return LocalEngine(options.workers)
    try:
        from .dask_engine import DaskEngine
    except ImportError as error:
        raise Trouble(f"--scheduler needs the package python3-distributed: {error}") from None
    return await DaskEngine.connect(options.scheduler, options.worker_wait)


async def _watched(engine: Engine, command: _Merge, messages: Messages) -> Outcome:
    """The merged outcome. Ends when the engine does."""
    merging = asyncio.create_task(command.run())
    beside = {asyncio.create_task(engine.watch()), asyncio.create_task(command.show(messages))}
    try:
        await asyncio.wait({merging, *beside}, return_when=asyncio.FIRST_COMPLETED)
        for task in [merging, *beside]:
            if task.done():
                task.result()
        return merging.result()
    finally:
        for task in [merging, *beside]:
            task.cancel()
        await asyncio.gather(merging, *beside, return_exceptions=True)


def _write(merged: Outcome, result: ResultFile) -> None:
    if merged["data"] is not None:
        result.write(merged["data"])
        return
    assert merged["file"] is not None
    try:
        with open(merged["file"], "rb") as file:
            while block := file.read(COPIED_AT_ONCE):
                result.write(block + file.readline())
    except OSError as error:
        raise Trouble.of(error, merged["file"]) from None


class _Merge:
    """One run."""

    def __init__(
        self, options: MergeOptions, engine: Engine, run: str, folder: WorkFolder | None
    ) -> None:
        self._options = options
        self._engine = engine
        self._run = run
        self._folder = folder
        self._attempts = Attempts(engine, options.patience)
        self._account = Account(options.source.length())

    async def run(self) -> Outcome:
        options = self._options
        tree = MergeTree(
            Actions(
                merge=self._merge,
                fan_in=self._fan_in,
                slots=lambda: self._engine.slots,
                drop=_drop,
                ended=self._account.ended,
            )
        )
        names = options.source.names()
        return await tree.run(cut_into_groups(names, options.group_files, options.group_bytes))

    async def show(self, messages: Messages) -> None:
        """Shows the progress, for ever."""
        await asyncio.sleep(BEFORE_FIRST)
        while True:
            messages.show(self._account.progress())
            await asyncio.sleep(BETWEEN)

    def check_left(self, messages: Messages) -> None:
        """Raises Trouble where all profiles were left out."""
        if self._account.count_left_out() == self._account.files:
            self._tell_left_out(messages)
            raise Trouble("no profile is left")

    def tell_end(self, messages: Messages) -> int:
        """The summary, and what was left out. Returns the exit status."""
        account = self._account
        if not self._options.is_quiet:
            for line in account.summary(self._engine.name, self._attempts.repeated):
                messages.tell(line)
        left_out = account.count_left_out()
        if left_out == 0:
            return DONE
        self._tell_left_out(messages)
        messages.tell(f"{left_out:,} of {account.files:,} profiles left out")
        return TOLD

    def _tell_left_out(self, messages: Messages) -> None:
        """In the order of the profiles."""
        for _, outcome in sorted(self._account.left_out.items()):
            messages.tell_told(outcome["messages"])

    async def _merge(self, node: Node) -> Outcome:
        task = Task(
            key=f"{self._run}.{node.stage}.{node.index}",
            make=lambda key: self._step(node, key),
            called=_called(node),
            is_of_profiles=node.group is not None,
            # What is needed to free others goes first, then what comes first.
            priority=node.stage,
        )
        with self._account.running():
            return await self._attempts.outcome_of(task)

    def _step(self, node: Node, key: str) -> Step:
        group = node.group
        return {
            "key": key,
            "names": group.names if group else None,
            "inputs": [_input(child) for child in node.children],
            "program": self._options.program,
            "folder": "/" if group is None or group.are_absolute else _working_folder(),
            "keeps_going": self._options.keeps_going and group is not None,
            "spill_folder": self._folder.path if self._folder else None,
            "spill_size": SPILL_SIZE if self._folder else MOST_WITHOUT_FOLDER,
        }

    def _fan_in(self, size: int) -> int:
        """How many results of such a size are merged in a step: their keys, and those that come as
        bytes themselves, fit a worker."""
        memory = self._engine.step_memory
        if memory is None:
            return self._options.fan_in
        return max(2, min(self._options.fan_in, memory // (MEMORY_OF_A_BYTE * max(1, size))))


def _working_folder() -> str:
    try:
        return os.getcwd()
    except OSError as error:
        raise Trouble.of(error, ".") from None


def _input(node: Node) -> Input:
    result = node.result
    if result is None:  # another step has found it lost meanwhile
        raise LostInputs([])
    return {"data": result["data"], "file": result["file"], "size": result["size"]}


def _drop(outcome: Outcome) -> None:
    if outcome["file"] is not None:
        with contextlib.suppress(OSError):
            os.unlink(outcome["file"])


def _called(node: Node) -> str:
    if node.group is None:
        return f"a merge of {len(node.children)} results"
    first, last = (os.fsdecode(name) for name in (node.group.first, node.group.last))
    if node.group.files == 1:
        return f"the merge of {first}"
    return f"the merge of {node.group.files:,} profiles, {first} to {last},"
