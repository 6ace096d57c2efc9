"""Breaks the code in random places, one at a time, and sees whether a test notices.

Usage: COUNT (100) changes, picked with SEED (1) from src/value, src/profile and src/reports, or from
the files below src/ whose path starts with one of PATH. A change that no test notices is printed: it
asks for a test, or for a reason why it changes nothing that matters.
"""

import concurrent.futures
import json
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = ROOT / "build" / "mutate"
FOLDERS = ["value/", "profile/", "reports/"]
# Never run: what only waits for other processes, and what checks the sources themselves. Run last,
# as they take long: tests with a great deal of data.
NEVER = "*Command*:Port*:Shell*:*Endpoint*:KeyWait*:Sweep*:*Floors*"
LAST = "BigTables*:*Model*:TracePaths*:RowLayout.CutsEvery*:LargePages*:TickBuckets*:TickTable*"

SWAPS = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r"\+\+", "--"), (r" \+= ", " -= "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\bif \((?!const|auto)", "if (!"),
    (r"(?<![\w.'])0(?![\w.'])", "1"), (r"(?<![\w.'])1(?![\w.'])", "2"),
    (r"(?<![\w.'])2(?![\w.'])", "3"), (r"\bstd::min\b", "std::max"), (r"\bstd::max\b", "std::min"),
]
# A statement on lines of its own that declares nothing.
STATEMENT = re.compile(r"^ +(?!return|using|throw|break|continue|case|default|const|static|auto)"
                       r"[A-Za-z_][\w.:>\[\]()*-]*(\(.*\)| [-+|]?= [^;]*);$")


def code_of(line):
    """The line with comments and texts blanked out, so that nothing in them is changed."""
    line = re.sub(r"//.*", lambda found: " " * len(found.group()), line)
    text = r'"(\\.|[^"\\])*"|\'(\\.|[^\'\\])+\''
    return re.sub(text, lambda found: "_" * len(found.group()), line)


def mutants_of(path):
    """(path, line number, changed line) of every change to a file."""
    for number, line in enumerate((ROOT / path).read_text(errors="surrogateescape").split("\n")):
        code = code_of(line)
        if code.startswith("#") or "static_assert" in code or "template" in code:
            continue
        for pattern, replacement in SWAPS:
            for found in re.finditer(pattern, code):
                changed = line[:found.start()] + replacement + line[found.end():]
                if replacement == "if (!":
                    closed = re.fullmatch(r"( *(?:} else )?)if \((.*)\) \{", line)
                    if not closed or ";" in closed.group(2):
                        continue
                    changed = f"{closed.group(1)}if (!({closed.group(2)})) {{"
                yield path, number, changed
        if STATEMENT.match(code):
            yield path, number, "  ;"


def build():
    # Not inlined, so that a changed header need not be compiled into the tests again.
    subprocess.run(["cmake", "--preset", "dev", "-B", BUILD, "-DCMAKE_CXX_FLAGS=-w",
                    "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -fno-inline",
                    "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON"],
                   cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", BUILD, "--target", "ptick_tests", "ptick", "port_listener"],
                   check=True)


def time_limits():
    """How many seconds each step of the tests may take: a change may make one run for ever."""
    limits = []
    for command in test_steps(BUILD / "tests/ptick_tests"):
        start = time.monotonic()
        if not passes_step(command, BUILD / "ptick", 600):
            sys.exit("tools/mutate: the tests fail before anything is changed")
        limits.append(10 + 5 * (time.monotonic() - start))
    return limits


def includers():
    """For every file below src/, the sources that have to be compiled again when it changes."""
    text = subprocess.run(["ninja", "-C", BUILD, "-t", "deps"], capture_output=True, text=True,
                          check=True).stdout
    result = {}
    for block in text.split("\n\n"):
        lines = block.strip().split("\n")
        if not lines[0].startswith("CMakeFiles/ptick_core.dir/"):
            continue
        source = ROOT / lines[0].split(":")[0].removeprefix("CMakeFiles/ptick_core.dir/")
        source = source.with_suffix("")
        for included in lines[1:]:
            path = pathlib.Path(included.strip())
            if path.is_relative_to(ROOT / "src"):
                result.setdefault(path.relative_to(ROOT).as_posix(), []).append(source)
    return result


def test_steps(tests):
    unit_tests = [tests, "--gtest_brief=1", "--gtest_fail_fast"]
    return [[*unit_tests, f"--gtest_filter=-{NEVER}:{LAST}"],
            [sys.executable, "-B", ROOT / "tests/golden_test.py", "-f"],
            [*unit_tests, f"--gtest_filter={LAST}-{NEVER}"]]


def passes_step(command, program, seconds):
    environment = os.environ | {"PTICK": str(program), "PTICK_SOURCE_DIR": str(ROOT),
                                "PORT_LISTENER": str(BUILD / "port_listener")}
    try:
        subprocess.run(["timeout", "-k", "1", str(seconds), *command], check=True,
                       env=environment, cwd=program.parent, stdin=subprocess.DEVNULL,
                       capture_output=True)
    except subprocess.CalledProcessError:
        return False
    return True


def compiled(folder, path, sources):
    """The objects of `sources`, with the changed file in `folder` in place of the one in src/."""
    commands = {entry["file"]: entry for entry in
                json.loads((BUILD / "compile_commands.json").read_text())}
    for index, source in enumerate(sources):
        command = commands[str(source)]["command"].split()
        command[command.index("-o") + 1] = str(folder / f"{index}.o")
        command[1:1] = [f"-I{folder / 'src'}"]
        if source == ROOT / path:
            command[-1] = str(folder / path)
        subprocess.run(command, cwd=BUILD, check=True, capture_output=True)
        yield folder / f"{index}.o"


def survives(mutant, sources, limits):
    """Whether the tests pass with this change; nothing when it does not compile."""
    path, number, changed = mutant
    with tempfile.TemporaryDirectory(prefix="ptick-mutant-") as name:
        folder = pathlib.Path(name)
        lines = (ROOT / path).read_text(errors="surrogateescape").split("\n")
        lines[number] = changed
        (folder / path).parent.mkdir(parents=True)
        (folder / path).write_text("\n".join(lines), errors="surrogateescape")
        try:
            objects = list(compiled(folder, path, sources))
            # The changed code comes first: where the linker has a choice, it takes that.
            for program, own in (("ptick_tests", "tests/CMakeFiles/ptick_tests.dir"),
                                 ("ptick", "CMakeFiles/ptick.dir")):
                subprocess.run(["g++", "-fuse-ld=lld", "-o", folder / program, *objects,
                                *(BUILD / own).rglob("*.o"), BUILD / "libptick_core.a"]
                               + ["-lgtest_main", "-lgtest"] * (program == "ptick_tests"),
                               check=True, capture_output=True)
        except subprocess.CalledProcessError:
            return None
        return all(passes_step(step, folder / "ptick", seconds)
                   for step, seconds in zip(test_steps(folder / "ptick_tests"), limits))


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 100
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    starts = sys.argv[3:] or FOLDERS
    build()
    limits = time_limits()
    sources = includers()
    mutants = [mutant for path in sorted(sources)
               if path.removeprefix("src/").startswith(tuple(starts))
               for mutant in mutants_of(path)]
    picked = random.Random(seed).sample(mutants, min(count, len(mutants)))
    survivors = tried = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = pool.map(lambda mutant: survives(mutant, sources[mutant[0]], limits), picked)
        for (path, number, changed), survived in zip(picked, results):
            tried += survived is not None
            print(f"{tried} tried\r", end="", file=sys.stderr, flush=True)
            if survived:
                survivors += 1
                before = (ROOT / path).read_text(errors="surrogateescape").split("\n")[number]
                print(f"{path}:{number + 1}\n- {before.strip()}\n+ {changed.strip()}", flush=True)
    print(f"{len(mutants)} changes known, {tried} tried, {survivors} not noticed")
    sys.exit(1 if survivors else 0)


if __name__ == "__main__":
    main()
