"""What has been done so far: the line of progress, and the summary at the end."""

from __future__ import annotations

import contextlib
import time
from collections.abc import Callable, Iterator
from dataclasses import dataclass

from .number_text import byte_count, counted, duration, seconds_text
from .step import Outcome
from .tree import Node

BEFORE_FIRST = 1.0  # seconds after which work is worth a line
BETWEEN = 0.1


@dataclass
class StageAccount:
    """The steps of a stage that were done, each counted once."""

    steps: int = 0
    bytes_read: int = 0
    bytes_written: int = 0
    seconds: float = 0.0  # of all steps added up
    slowest: float = 0.0


class Account:
    """Told by the tree what begins and ends."""

    def __init__(
        self, length: int | None, clock: Callable[[], float] = time.monotonic
    ) -> None:
        self._clock = clock
        self._begin = clock()
        self._length = length  # of the names of all profiles
        self._names_done = 0
        self.files = 0
        self.left_out: dict[int, Outcome] = {}
        self.stages: list[StageAccount] = []
        self._running = 0

    @contextlib.contextmanager
    def running(self) -> Iterator[None]:
        """Around each step."""
        self._running += 1
        try:
            yield
        finally:
            self._running -= 1

    def ended(self, node: Node, outcome: Outcome) -> None:
        """For the first time; what is done again is not counted again."""
        if node.is_done:
            return
        while len(self.stages) <= node.stage:
            self.stages.append(StageAccount())
        stage = self.stages[node.stage]
        stage.steps += 1
        stage.bytes_written += outcome["size"]
        stage.seconds += outcome["seconds"]
        stage.slowest = max(stage.slowest, outcome["seconds"])
        if node.group is None:
            stage.bytes_read += sum(child.result["size"] for child in node.children if child.result)
            return
        stage.bytes_read += node.group.size
        self.files += node.group.files
        self._names_done += node.group.list_size
        if outcome["left_out"]:
            self.left_out[node.first] = outcome

    def seconds(self) -> float:
        return self._clock() - self._begin

    def count_left_out(self) -> int:
        return sum(outcome["left_out"] for outcome in self.left_out.values())

    def bytes_read(self) -> int:
        """Of the profiles."""
        return self.stages[0].bytes_read if self.stages else 0

    def progress(self) -> str:
        steps = sum(stage.steps for stage in self.stages)
        text = (
            f"{counted(self.files, 'profile')}, {byte_count(self.bytes_read())} read, "
            f"{self._rate()}, {counted(steps, 'step')} done, {self._running:,} running"
        )
        if not self._length or not 0 < self._names_done <= self._length:
            return text
        share = self._names_done / self._length
        text += f", {int(share * 100)} %"
        left = self.seconds() / share * (1 - share)
        return text if share == 1 else text + f", {duration(left)} left"

    def summary(self, workers: str, repeated: int) -> list[str]:
        lines = [
            f"{counted(self.files, 'profile')}, {byte_count(self.bytes_read())} in "
            f"{seconds_text(self.seconds())}, {self._rate()}, by {workers}"
        ]
        for number, stage in enumerate(self.stages, 1):
            lines.append(
                f"stage {number}: {counted(stage.steps, 'step')}, "
                f"{byte_count(stage.bytes_read)} to {byte_count(stage.bytes_written)}, "
                f"{seconds_text(stage.seconds / stage.steps)} a step, "
                f"the slowest {seconds_text(stage.slowest)}"
            )
        if repeated:
            lines.append(f"{counted(repeated, 'step')} done again")
        return lines

    def _rate(self) -> str:
        return byte_count(int(self.bytes_read() / max(self.seconds(), 0.001))) + "/s"
