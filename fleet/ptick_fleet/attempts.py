"""Does a step, again where it fails, and at another place, too, where it takes too long."""

from __future__ import annotations

import asyncio
import re
import time
from collections.abc import Callable
from dataclasses import dataclass

from .engine import Engine
from .problems import LostInputs, ToldTrouble, Trouble
from .step import Outcome, Step

MOST_FAILURES = 3
MOST_AT_ONCE = 3
LATE_FACTOR = 6
BEFORE_AGAIN = 0.3  # seconds, times the failures so far

# What is wrong in a line of a profile is wrong everywhere.
AT_A_LINE = re.compile(rb": line [0-9]+: ")


@dataclass
class Task:
    """A step as the tree knows it."""

    key: str
    make: Callable[[str], Step]  # for the key of an attempt
    called: str  # for messages
    is_of_profiles: bool
    priority: int


class Attempts:
    """All steps of a run."""

    def __init__(self, engine: Engine, patience: float) -> None:
        self._engine = engine
        self._patience = patience
        self._slowest = 0.0
        self.repeated = 0  # attempts beyond the first of each step

    async def outcome_of(self, task: Task) -> Outcome:
        """Of a step that is done. Raises LostInputs, ToldTrouble where a profile is bad, and other
        Trouble where it fails again and again."""
        step = _Attempt(self, task)
        try:
            return await step.run()
        finally:
            await step.cancel()

    async def attempt(self, task: Task, number: int, avoided: frozenset[str]) -> Outcome:
        begin = time.monotonic()
        self.repeated += number > 0
        step = task.make(f"{task.key}.{number}.")
        outcome = await self._engine.attempt(step, task.priority, avoided)
        if outcome["kind"] == "done":
            self._slowest = max(self._slowest, time.monotonic() - begin)
        return outcome

    def late_after(self) -> float:
        return max(self._patience, LATE_FACTOR * self._slowest)

    @property
    def is_spread(self) -> bool:
        return self._engine.is_spread

    async def places_of(self, keys: list[str]) -> frozenset[str]:
        return await self._engine.places_of(keys)


class _Attempt:
    """The attempts at one step."""

    def __init__(self, attempts: Attempts, task: Task) -> None:
        self._attempts = attempts
        self._task = task
        self._running: dict[asyncio.Task[Outcome], str] = {}
        self._number = 0
        self._failures = 0
        self._failed_at: frozenset[str] = frozenset()
        self._least: Outcome | None = None

    async def run(self) -> Outcome:
        self._start(frozenset())
        while True:
            done, _ = await asyncio.wait(
                self._running,
                timeout=self._attempts.late_after(),
                return_when=asyncio.FIRST_COMPLETED,
            )
            if not done:
                await self._start_beside()
            for each in done:
                del self._running[each]
                outcome = self._judged(each.result())
                if outcome is not None:
                    return outcome
            if not self._running:
                await asyncio.sleep(BEFORE_AGAIN * self._failures)
                self._start(self._failed_at)

    async def cancel(self) -> None:
        for each in self._running:
            each.cancel()
        await asyncio.gather(*self._running, return_exceptions=True)

    def _start(self, avoided: frozenset[str]) -> None:
        key = f"{self._task.key}.{self._number}."
        attempt = self._attempts.attempt(self._task, self._number, avoided)
        self._running[asyncio.create_task(attempt)] = key
        self._number += 1

    async def _start_beside(self) -> None:
        if self._attempts.is_spread and len(self._running) < MOST_AT_ONCE:
            places = await self._attempts.places_of(list(self._running.values()))
            self._start(places | self._failed_at)

    def _judged(self, outcome: Outcome) -> Outcome | None:
        """The outcome where it is one to go on with, nothing where the step is to be done again."""
        kind = outcome["kind"]
        if kind == "lost":
            raise LostInputs(outcome["lost"])
        if kind == "done" and not self._may_be_better(outcome):
            return self._better(outcome)
        if kind == "done":
            self._least = outcome
        elif kind == "trouble" and self._task.is_of_profiles:
            if not self._attempts.is_spread or AT_A_LINE.search(outcome["messages"]):
                raise ToldTrouble(outcome["messages"])
        self._failures += 1
        self._failed_at |= {outcome["place"]}
        if self._failures >= MOST_FAILURES:
            self._give_up(outcome)
        return None

    def _may_be_better(self, outcome: Outcome) -> bool:
        """Whether a profile that this place could not read may be read at another."""
        cannot_read = outcome["left_out"] - len(AT_A_LINE.findall(outcome["messages"]))
        return cannot_read > 0 and self._attempts.is_spread and self._least is None

    def _better(self, outcome: Outcome) -> Outcome:
        least = self._least
        return least if least and least["left_out"] < outcome["left_out"] else outcome

    def _give_up(self, outcome: Outcome) -> None:
        if outcome["kind"] == "trouble" and self._task.is_of_profiles:
            raise ToldTrouble(outcome["messages"])
        place = f" at {outcome['place']}" if outcome["place"] else ""
        raise Trouble(
            f"{self._task.called} failed {self._failures} times, the last time{place}: "
            f"{outcome['reason']}"
        )
