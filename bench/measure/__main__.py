"""Measures ptick from end to end; started by bench/end_to_end, whose --help explains."""

import argparse
import os
import pathlib
import platform
import tempfile

import profiles
import rivals
import tables
import timing
import works


def parse_arguments():
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--build", required=True)
    parser.add_argument("--ptick")
    parser.add_argument("--small", dest="size", action="store_const", const="small")
    parser.add_argument("--full", dest="size", action="store_const", const="full")
    parser.add_argument("--no-rivals", action="store_true")
    parser.add_argument("--cpu", action="store_true")
    parser.set_defaults(size="default")
    return parser.parse_args()


def describe_machine(by_processor):
    model = next((line.split(":")[1].strip()
                  for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines()
                  if line.startswith("model name")), platform.machine())
    load = os.getloadavg()[0]
    kind = "processor" if by_processor else "wall"
    print(f"{model}, {os.cpu_count()} cores, load {load:.1f} at the start; {kind} time",
          end="\n\n", flush=True)


def check_rows(generated, programs):
    one = [generated.one(20_000, "--programs", 50, "--last-line", 900)]
    several = generated.several(3, 20_000, "--common", "--programs", 50, "--last-line", 900)
    for work, files in (("lines", one), ("programs", one), ("merge", several)):
        programs.check_same_rows(work, files)
    for _, work, count, records in works.OTHER_RECORDS:
        programs.check_same_rows(work, generated.several(count, 20_000, "--records", records))


def main():
    arguments = parse_arguments()
    build = pathlib.Path(arguments.build)
    programs = rivals.Programs(arguments.ptick or build / "ptick", build / "bench")
    sizes = works.SIZES[arguments.size]
    timer = timing.Timer(arguments.cpu)
    describe_machine(arguments.cpu)
    with tempfile.TemporaryDirectory(prefix="ptick_bench.") as name:
        scratch = pathlib.Path(name)
        generated = profiles.Profiles(programs.generator(), scratch)
        check_rows(generated, programs)
        with_slow = not arguments.no_rivals
        compared = works.compare(works.compared(sizes, generated), programs, timer, with_slow)
        compared |= works.compare_start(generated, programs, timer, with_slow)
        print(tables.comparison(compared), end="\n\n")
        if len(os.sched_getaffinity(0)) > 1 and not arguments.cpu:
            by_threads = works.compare_threads(works.compared(sizes, generated), programs, timer)
            print(tables.threads(by_threads), end="\n\n", flush=True)
        grown = works.line_growth(sizes, generated, programs, timer)
        print(tables.line_growth(grown, sizes.comparison), end="\n\n", flush=True)
        followed = works.follow(sizes, generated, programs, timer, scratch)
        print(tables.growth(followed, sizes.rest))


if __name__ == "__main__":
    main()
