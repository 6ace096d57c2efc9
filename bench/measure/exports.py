"""Measures ptick-export against ptick; started by bench/exports, whose --help explains."""

import argparse
import pathlib
import tempfile

import profiles
import timing

# Kinds of records, the report of ptick that shows them, and the formats that hold them.
WORKS = (
    ("trace", (), ("json", "csv", "callgrind", "pprof", "speedscope", "folded")),
    ("perform", ("-pv",), ("json", "csv --table=commands", "speedscope", "trace")),
    ("subroutine_call", ("-s",), ("json", "csv --table=subroutines", "callgrind")),
    ("input", ("-k/dev/null", "-t"), ("json", "csv --table=inputs", "trace")),
)


def row(title, figures, own):
    return (f"| {title} | {figures.seconds:.3f} s | × {figures.seconds / own.seconds:.1f} "
            f"| {figures.peak_kb / 1000:.0f} MB | × {figures.peak_kb / own.peak_kb:.1f} |")


def main():
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--build", required=True)
    parser.add_argument("--lines", type=int, default=1_000_000)
    parser.add_argument("--cpu", action="store_true")
    arguments = parser.parse_args()
    build = pathlib.Path(arguments.build)
    timer = timing.Timer(arguments.cpu)
    print(f"| {arguments.lines:,} lines | time | of ptick's | memory | of ptick's |")
    print("|---|---|---|---|---|", flush=True)
    with tempfile.TemporaryDirectory(prefix="ptick_exports.") as name:
        generated = profiles.Profiles(build / "bench" / "generate_profile", name)
        for records, options, formats in WORKS:
            profile = generated.one(arguments.lines, "--records", records)
            commands = [timing.command("ptick", build / "ptick", *options, profile)]
            commands += [timing.command(each, build / "ptick-export", "-q",
                                        *f"--to={each}".split(), profile) for each in formats]
            results = timer.measure(commands, runs=5)
            own = results["ptick"]
            print(row(f"{records}: ptick {' '.join(options)}".rstrip(), own, own))
            for each in formats:
                print(row(f"{records}: {each}", results[each], own), flush=True)


if __name__ == "__main__":
    main()
