"""Wall times from hyperfine and peak memory from GNU time."""

import dataclasses
import json
import pathlib
import shlex
import subprocess
import tempfile


@dataclasses.dataclass(frozen=True)
class Command:
    """A program to measure; its output goes to /dev/null."""

    name: str
    words: tuple


@dataclasses.dataclass(frozen=True)
class Figures:
    """Of the fastest run, which others on the machine disturbed least."""

    seconds: float
    peak_kb: int  # of the largest process


def command(name, *words):
    return Command(name, tuple(str(word) for word in words))


def measure(commands, runs):
    """Runs the commands in turn, `runs` times each behind one run to warm up; Figures by name."""
    with tempfile.TemporaryDirectory() as scratch:
        times = pathlib.Path(scratch, "times")
        subprocess.run(
            ["hyperfine", "-N", "--style=none", "--warmup=1", f"--runs={runs}",
             f"--export-json={times}", *(shlex.join(each.words) for each in commands)],
            check=True, stdout=subprocess.DEVNULL)
        results = json.loads(times.read_text(encoding="ascii"))["results"]
    return {each.name: Figures(result["min"], _peak_kb(each))
            for each, result in zip(commands, results)}


# A process counts its parent's memory until it becomes another program: GNU time is a small parent,
# this one would not be.
def _peak_kb(each):
    with tempfile.NamedTemporaryFile("r", encoding="ascii") as report:
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", report.name, *each.words],
                       check=True, stdout=subprocess.DEVNULL)
        return int(report.read())
