"""Steps on the cores of this machine: no cluster, no port."""

from __future__ import annotations

import asyncio
import os
from concurrent.futures import ThreadPoolExecutor

from .run_step import cancel_steps, new_running, run_step
from .step import Outcome, Step


class LocalEngine:
    """Each thread waits for one ptick-merge at a time."""

    is_spread = False

    def __init__(self, workers: int) -> None:
        self.slots = workers
        self.name = "1 process" if workers == 1 else f"{workers:,} processes"
        self.step_memory: int | None = (
            os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") // workers
        )
        self._running = new_running()
        self._threads = ThreadPoolExecutor(workers)

    async def attempt(self, step: Step, priority: int, avoided: frozenset[str]) -> Outcome:
        loop = asyncio.get_running_loop()
        try:
            return await loop.run_in_executor(self._threads, run_step, step, self._running)
        except asyncio.CancelledError:
            cancel_steps(step["key"], self._running)
            raise

    async def places_of(self, keys: list[str]) -> frozenset[str]:
        return frozenset()

    async def watch(self) -> None:
        await asyncio.Event().wait()

    async def close(self, keys: str) -> None:
        cancel_steps(keys, self._running)
        # They end at once now; what they made goes with them.
        await asyncio.to_thread(self._threads.shutdown, cancel_futures=True)
