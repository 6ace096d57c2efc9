"""Steps on the workers of a Dask cluster."""

from __future__ import annotations

import asyncio
import contextlib
import logging
import pickle
import sys
import time
import warnings
from collections.abc import Awaitable
from typing import Any

from . import run_step, step
from .problems import Trouble
from .run_step import cancel_on_worker, run_step_on_worker
from .step import Outcome, Step, failed_outcome

CONNECT_SECONDS = 6  # with the time that it takes to load Dask
LEAST_CONNECT_SECONDS = 2
VERSION_SECONDS = 3
CLOSE_SECONDS = 3
BETWEEN_LOOKS = 0.5


class DaskEngine:
    """Made by connect()."""

    is_spread = True

    def __init__(self, client: Any, address: str, worker_wait: int) -> None:
        self._client = client
        self._address = address
        self._worker_wait = worker_wait

    @classmethod
    async def connect(cls, address: str, worker_wait: int) -> DaskEngine:
        """Raises Trouble where no scheduler answers within ten seconds."""
        begin = time.monotonic()
        _silence()
        import cloudpickle
        import distributed

        # Workers need Dask and ptick-merge, nothing of this program.
        for module in (run_step, step):
            cloudpickle.register_pickle_by_value(module)
        left = max(LEAST_CONNECT_SECONDS, CONNECT_SECONDS - (time.monotonic() - begin))
        try:
            make: Any = distributed.Client
            client = await asyncio.wait_for(
                make(address, asynchronous=True, timeout=left, set_as_default=False),
                left + 0.5,
            )
        except (OSError, asyncio.TimeoutError):
            raise Trouble(f"no scheduler answers at {address}") from None
        except (ValueError, TypeError, KeyError, RuntimeError, ImportError) as error:
            reason = str(error).partition("\n")[0]
            raise Trouble(f"the address '{address}' cannot be used: {reason}") from None
        engine = cls(client, address, worker_wait)
        await engine._check_versions()
        return engine

    async def _check_versions(self) -> None:
        """Functions and results travel between equal versions only."""
        from distributed.versions import get_versions

        own = get_versions()["packages"]
        scheduler = self._client.scheduler
        others = {
            "the scheduler": await _answer(scheduler.versions()),
            # Where a worker hangs all answers stay away; its steps are done by others.
            **await _answer(scheduler.broadcast(msg={"op": "versions"}, on_error="ignore")),
        }
        for place, there in others.items():
            if not there:
                continue
            for package in ("python", "distributed"):
                theirs = str(there["packages"].get(package))
                if _release(theirs) != _release(str(own[package])):
                    raise Trouble(f"{place} has {package} {theirs}, this machine {own[package]}")

    @property
    def _workers(self) -> dict[str, Any]:
        # Kept up to date by the client, every two seconds.
        workers: dict[str, Any] = self._client.scheduler_info().get("workers", {})
        return workers

    @property
    def name(self) -> str:
        count = len(self._workers)
        return "1 worker" if count == 1 else f"{count:,} workers"

    @property
    def slots(self) -> int:
        threads: int = sum(worker["nthreads"] for worker in self._workers.values())
        return max(1, threads)

    @property
    def step_memory(self) -> int | None:
        limits = [
            worker["memory_limit"] // max(1, worker["nthreads"])
            for worker in self._workers.values()
            if worker.get("memory_limit")
        ]
        return min(limits, default=None)

    async def attempt(self, step: Step, priority: int, avoided: frozenset[str]) -> Outcome:
        from distributed.scheduler import KilledWorker

        others = [address for address in self._workers if address not in avoided]
        place = {"workers": others, "allow_other_workers": True} if avoided and others else {}
        future = self._client.submit(
            run_step_on_worker,
            # As bytes: Dask would look for keys of other tasks in it.
            pickle.dumps(step),
            key="ptick-fleet-" + step["key"],
            pure=False,
            priority=priority,
            **place,
        )
        try:
            outcome: Outcome = await future
            return outcome
        except asyncio.CancelledError:
            task = asyncio.current_task()
            if task is None or task.cancelling():
                self._end_in_background(step["key"])
                raise
            # The scheduler has forgotten it, or is gone itself: watch() tells of that.
            await asyncio.sleep(2 * BETWEEN_LOOKS)
            return failed_outcome("the scheduler gave it up")
        except KilledWorker:
            # Those that only waited on a worker are blamed for its death, too.
            return failed_outcome("every worker died that was given it")
        except Exception as error:  # whatever the cluster makes of it, it may go better again
            return failed_outcome(f"{type(error).__name__}: {error}".partition("\n")[0])
        finally:
            future.release()

    async def places_of(self, keys: list[str]) -> frozenset[str]:
        wanted = {"ptick-fleet-" + key for key in keys}
        processing = await self._client.processing()
        return frozenset(place for place, there in processing.items() if wanted & set(there))

    async def watch(self) -> None:
        last_seen = time.monotonic()
        while True:
            await asyncio.sleep(BETWEEN_LOOKS)
            if self._client.status != "running":
                raise Trouble(f"the scheduler at {self._address} is gone")
            if self._workers:
                last_seen = time.monotonic()
            elif time.monotonic() - last_seen > self._worker_wait:
                raise Trouble(
                    f"the scheduler at {self._address} has had no worker for {self._worker_wait} s"
                )

    async def close(self, keys: str) -> None:
        with contextlib.suppress(Exception):
            await asyncio.wait_for(self._end(keys), CLOSE_SECONDS)
        with contextlib.suppress(Exception):
            await asyncio.wait_for(self._client.close(CLOSE_SECONDS), CLOSE_SECONDS)

    async def _end(self, keys: str) -> None:
        if self._client.status == "running":
            await self._client.run(cancel_on_worker, keys, on_error="ignore")

    def _end_in_background(self, keys: str) -> None:
        async def end() -> None:
            with contextlib.suppress(Exception):
                await asyncio.wait_for(self._end(keys), CLOSE_SECONDS)

        _background.add(task := asyncio.get_running_loop().create_task(end()))
        task.add_done_callback(_background.discard)


async def _answer(asked: Awaitable[dict[str, Any]]) -> dict[str, Any]:
    """Nothing where it does not come soon."""
    try:
        return await asyncio.wait_for(asked, VERSION_SECONDS)
    except (OSError, asyncio.TimeoutError):
        return {}


# The loop itself keeps no task alive.
_background: set[asyncio.Task[None]] = set()


def _silence() -> None:
    """The messages of this program are its own; those of the engine are for whoever runs it."""
    warnings.simplefilter("ignore")
    logging.disable(logging.CRITICAL)
    sys.unraisablehook = lambda _: None
    asyncio.get_running_loop().set_exception_handler(lambda *_: None)


def _release(version: str) -> list[str]:
    """The part of a version that must be equal: 3.11 of 3.11.2.final.0."""
    return version.split(".")[:2]
