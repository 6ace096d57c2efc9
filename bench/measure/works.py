"""The works: what is run on which profiles."""

import dataclasses
import os

import timing


@dataclasses.dataclass(frozen=True)
class Sizes:
    """Numbers of lines."""

    comparison: tuple  # of the works that are compared with other programs
    merge: int  # of each of the eight merged files
    rest: tuple  # small and large, of the works that are not


SIZES = {
    "small": Sizes((100_000,), 100_000, (10_000, 100_000)),
    "default": Sizes((100_000, 1_000_000), 1_000_000, (100_000, 1_000_000)),
    "full": Sizes((100_000, 1_000_000, 10_000_000), 1_000_000, (100_000, 1_000_000)),
}

# Title, work, number of files, their records.
OTHER_RECORDS = (
    ("{:,} PERFORMs, -p", "performs", 1, "perform"),
    ("{:,} PERFORMs, -pv", "perform_costs", 1, "perform"),
    ("{:,} subroutine calls, -s", "subroutines", 1, "subroutine_call"),
    ("{:,} shared objects, -o", "objects", 1, "shared_object"),
    ("{:,} inputs, -k -t", "inputs", 1, "input"),
    ("merge of 2 files of {:,} PERFORMs, -p", "performs_merge", 2, "perform"),
)


def compared(sizes, profiles):
    """(title, kind, profiles) of W1 to W3, and of the other records."""
    for lines in sizes.comparison:
        yield f"W1: {lines:,} lines", "lines", [profiles.one(lines)]
    for lines in sizes.comparison:
        yield f"W2: {lines:,} lines, -n", "programs", [profiles.one(lines)]
    files = profiles.several(8, sizes.merge, "--common")
    yield f"W3: merge of 8 files of {sizes.merge:,} lines", "merge", files
    for title, kind, count, records in OTHER_RECORDS:
        files = profiles.several(count, sizes.merge, "--records", records)
        yield title.format(sizes.merge), kind, files


def compare(works, programs, timer, with_slow):
    """Figures by name of program, for every title."""
    results = {}
    for title, kind, files in works:
        fast = [programs.work(kind, files), *programs.fast(kind, files)]
        results[title] = timer.measure(fast, runs=10)
        if with_slow:
            results[title] |= timer.measure(programs.slow(kind, files), runs=2, warmup=0)
    return results


def compare_threads(works, programs, timer):
    """Figures of one thread and of all, in turn, by title of the work."""
    results = {}
    for title, kind, files in works:
        every = programs.work(kind, files)
        one = timing.command("one", "taskset", "-c", min(os.sched_getaffinity(0)), *every.words)
        figures = timer.measure([one, every], runs=10)
        results[title] = (figures["one"], figures[every.name])
    return results


def compare_start(profiles, programs, timer, with_slow):
    """W4: start-up, where a profile is small."""
    profile = profiles.one(100)
    commands = [programs.ptick(profile), timing.command("true", "true"),
                timing.command("wc -l", "wc", "-l", profile)]
    if with_slow:
        commands += programs.slow("lines", [profile])
    return {"W4: 100 lines": timer.measure(commands, runs=300)}


def line_growth(sizes, profiles, programs, timer):
    """For W1 and W2: ptick's figures at each of the compared sizes, measured together."""
    return {work: [*timer.measure([dataclasses.replace(programs.work(kind, [profiles.one(lines)]),
                                                       name=str(lines))
                                   for lines in sizes.comparison], runs=10).values()]
            for work, kind in (("W1", "lines"), ("W2", "programs"))}


def rest(lines, profiles, programs, scratch):
    """Title and command of the works that are only followed as they grow."""
    performs = profiles.one(lines, "--records", "perform")
    yield "perform, -p", programs.ptick("-p", performs)
    yield "perform, -pv", programs.ptick("-pv", performs)
    calls = profiles.one(lines, "--records", "subroutine_call")
    yield "subroutine_call, -s", programs.ptick("-s", calls)
    objects = profiles.one(lines, "--records", "shared_object")
    yield "shared_object, -o", programs.ptick("-o", objects)
    inputs = profiles.one(lines, "--records", "input")
    yield "input, -k -t", programs.ptick(f"-k{scratch / 'keys'}", "-t", inputs)
    files = profiles.several(1000, lines // 1000, "--common")
    yield "merge of 1,000 files", programs.ptick(*files)
    files = profiles.several(2, lines // 2, "--distinct-keys")
    yield "merge of distinct keys only", programs.ptick(*files)
    source = f"-f{profiles.sources()}"
    yield "rows with source text of 2,000 records", programs.ptick(source, profiles.one(lines))
    yield "the same, -n", programs.ptick("-n", source, profiles.one(lines))
    many = profiles.one(lines, "--programs", lines // 10)
    yield "a program per 10 lines, -n", programs.ptick("-n", many)
    yield "a program per 10 lines, -nu", programs.ptick("-nu", many)


def follow(sizes, profiles, programs, timer, scratch):
    """The figures at both sizes, for every title."""
    results = {}
    for lines in sizes.rest:
        for title, command in rest(lines, profiles, programs, scratch):
            results.setdefault(title, []).append(timer.measure([command], runs=5)["ptick"])
    return results
