"""Runs two builds of ptick in turn; started by bench/compare_commits, whose --help explains."""

import argparse
import dataclasses
import os
import pathlib
import statistics
import tempfile
import time

import profiles


@dataclasses.dataclass(frozen=True)
class Run:
    """What one run took."""

    wall: float
    cpu: float
    peak_kb: int


@dataclasses.dataclass(frozen=True)
class Work:
    """Arguments of ptick; `repeat` runs count as one where a single one is too short to be timed."""

    name: str
    arguments: list
    repeat: int = 1


def works(lines, generated, scratch):
    one = generated.one(lines)
    yield Work("W1: rows", [one])
    yield Work("W2: rows, -n", ["-n", one])
    yield Work("W3: merge of a file with itself, 8 times", [generated.one(lines // 8)] * 8)
    yield Work("W3: merge of 8 files, shuffled", generated.several(8, lines // 8, "--common"))
    yield Work("W4: 100 lines", [generated.one(100)], repeat=200)
    yield Work("rows, -i", ["-i", one])
    yield Work("rows, -nu", ["-nu", one])
    performs = generated.one(lines, "--records", "perform")
    yield Work("-p", ["-p", performs])
    yield Work("-pv", ["-pv", performs])
    yield Work("-s", ["-s", generated.one(lines, "--records", "subroutine_call")])
    yield Work("-o", ["-o", generated.one(lines, "--records", "shared_object")])
    inputs = generated.one(lines, "--records", "input")
    yield Work("-k -t", [f"-k{scratch / 'keys'}", "-t", inputs])
    yield Work("-a", ["-a", one])
    source = f"-f{generated.sources()}"
    yield Work("rows with source text", [source, one])
    yield Work("merge of 1,000 files", generated.several(1000, lines // 1000, "--common"))
    yield Work("merge of distinct keys", generated.several(2, lines // 2, "--distinct-keys"))
    yield Work("merge of PERFORMs", ["-p", performs, performs])
    distinct = generated.several(2, lines // 2, "--records", "perform")
    yield Work("merge of distinct PERFORMs", ["-p", *distinct])


def run(program, work):
    """Runs a work; its output goes to /dev/null. A peak below that of this process (16 MB) is not
    seen: a process counts its parent's memory until it becomes another program."""
    words = [program, *map(str, work.arguments)]
    before = time.monotonic()
    cpu, peak = 0.0, 0
    for _ in range(work.repeat):
        pid = os.posix_spawn(program, words, os.environ, file_actions=[
            (os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)])
        _, status, usage = os.wait4(pid, 0)
        if status != 0:
            raise SystemExit(f"{' '.join(words)}: status {status}")
        cpu += usage.ru_utime + usage.ru_stime
        peak = max(peak, usage.ru_maxrss)
    return Run(time.monotonic() - before, cpu, peak)


def compare(work, old, new, pairs):
    """A row of the table."""
    run(old, work), run(new, work)  # warms up
    runs = [(run(old, work), run(new, work)) for _ in range(pairs)]
    wall = statistics.median(b.wall / a.wall for a, b in runs)
    cpu = statistics.median(b.cpu / max(a.cpu, 1e-6) for a, b in runs)
    best = min(b.wall for _, b in runs) / work.repeat
    peaks = [max(each[side].peak_kb for each in runs) / 1024 for side in (0, 1)]
    return (f"| {work.name} | {best:.4f} | x{wall:.3f} | x{cpu:.3f} "
            f"| {peaks[0]:.1f} -> {peaks[1]:.1f} |")


def main():
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--old", required=True)
    parser.add_argument("--new", required=True)
    parser.add_argument("--generator", required=True)
    parser.add_argument("--lines", type=int, default=1_000_000)
    parser.add_argument("--pairs", type=int, default=15)
    parser.add_argument("--only", default="")
    arguments = parser.parse_args()
    print("| work | seconds (new, fastest) | wall, new / old | processor, new / old | MB, old -> new |")
    print("|---|---|---|---|---|", flush=True)
    with tempfile.TemporaryDirectory(prefix="ptick_pairs.") as name:
        scratch = pathlib.Path(name)
        generated = profiles.Profiles(arguments.generator, scratch)
        for work in works(arguments.lines, generated, scratch):
            if arguments.only in work.name:
                print(compare(work, arguments.old, arguments.new, arguments.pairs), flush=True)


if __name__ == "__main__":
    main()
