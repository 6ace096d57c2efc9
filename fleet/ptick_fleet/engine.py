"""What runs the steps of a merge: this machine, or a cluster."""

from __future__ import annotations

from typing import Protocol

from .step import Outcome, Step


class Engine(Protocol):
    """Runs steps side by side. All but the properties is called from one event loop."""

    @property
    def name(self) -> str:
        """Who does the work, for the summary: "2 processes"."""

    @property
    def slots(self) -> int:
        """How many steps run at once, as far as is known now; 1 at least."""

    @property
    def is_spread(self) -> bool:
        """Whether a step may do better at another place."""

    @property
    def step_memory(self) -> int | None:
        """The bytes that a step may take, where somebody says."""

    async def attempt(self, step: Step, priority: int, avoided: frozenset[str]) -> Outcome:
        """Does a step once, at none of the places avoided where there is another. When this is
        cancelled the step is ended."""

    async def places_of(self, keys: list[str]) -> frozenset[str]:
        """Where steps are being done, or are to be, that have these keys."""

    async def watch(self) -> None:
        """Waits until nothing can be done any more, and raises Trouble then."""

    async def close(self, keys: str) -> None:
        """Ends all steps whose keys begin with a text; takes a few seconds at most."""
