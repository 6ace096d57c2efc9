"""Times from hyperfine and peak memory from GNU time."""

import dataclasses
import json
import pathlib
import shlex
import statistics
import subprocess
import sys
import tempfile


ROUNDS = 5


@dataclasses.dataclass(frozen=True)
class Command:
    """A program to measure; its output goes to /dev/null."""

    name: str
    words: tuple


@dataclasses.dataclass(frozen=True)
class Figures:
    """What a command took."""

    seconds: float
    peak_kb: int  # of the largest process


def command(name, *words):
    return Command(name, tuple(str(word) for word in words))


class Timer:
    """Measures by the clock, the fastest of the runs, which others on the machine disturbed least; or
    by processor time, the mean of the runs, all processes together."""

    def __init__(self, by_processor):
        self._by_processor = by_processor

    def measure(self, commands, runs, warmup=1):
        """Runs the commands in turn, in all each `runs` times; Figures by name.

        In turn, because a machine that is shared is faster at one time than at another: every command
        gets its share of the good times.
        """
        rounds = min(runs, ROUNDS)
        times = [[self._seconds(result)
                  for result in _run_hyperfine(commands, max(runs // rounds, 1), warmup)]
                 for _ in range(rounds)]
        combine = statistics.mean if self._by_processor else min
        return {each.name: Figures(combine(seconds), _peak_kb(each))
                for each, seconds in zip(commands, zip(*times))}

    def _seconds(self, result):
        return result["user"] + result["system"] if self._by_processor else result["min"]


def _run_hyperfine(commands, runs, warmup):
    with tempfile.TemporaryDirectory() as scratch:
        times = pathlib.Path(scratch, "times")
        run = subprocess.run(
            ["hyperfine", "-N", "--style=none", f"--warmup={warmup}", f"--runs={runs}",
             f"--export-json={times}", *(shlex.join(each.words) for each in commands)],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False)
        if run.returncode != 0:  # otherwise it has warnings about outliers only
            sys.exit(run.stderr)
        return json.loads(times.read_text(encoding="ascii"))["results"]


# A process counts its parent's memory until it becomes another program: GNU time is a small parent,
# this one would not be.
def _peak_kb(each):
    with tempfile.NamedTemporaryFile("r", encoding="ascii") as report:
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", report.name, *each.words],
                       check=True, stdout=subprocess.DEVNULL)
        return int(report.read())
