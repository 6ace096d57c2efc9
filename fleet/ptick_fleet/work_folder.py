"""The folder of one run, for results between steps that are large."""

from __future__ import annotations

import asyncio
import os
import shutil
import tempfile
import time

from .problems import Trouble

REMOVE_SECONDS = 5.0


class WorkFolder:
    """A fresh folder below the one that a user names, or below that for temporary files."""

    def __init__(self, parent: str | None, run: str) -> None:
        above = os.path.abspath(parent if parent is not None else tempfile.gettempdir())
        self.path = os.path.join(above, f"ptick-fleet-{run}")
        try:
            os.mkdir(self.path)
        except OSError as error:
            raise Trouble.of(error, parent if parent is not None else above) from None

    async def remove(self) -> None:
        """Steps that are just being ended may still write into it: it is tried for a while."""
        give_up = time.monotonic() + REMOVE_SECONDS
        while os.path.lexists(self.path):
            shutil.rmtree(self.path, ignore_errors=True)
            if not os.path.lexists(self.path) or time.monotonic() > give_up:
                return
            await asyncio.sleep(0.05)
