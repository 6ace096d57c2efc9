"""ptick-export as its users run it: options, inputs, results, messages, exit status."""

import gzip
import json
import os
import re
import subprocess
import sys
import unittest

from support.companions import CompanionTest, path_of
from support.program import SOURCE_DIR, clean_environment
from support.terminal import Terminal

FORMATS = ["json", "csv", "callgrind", "pprof", "speedscope", "trace", "folded"]
TABLES = ["lines", "programs", "commands", "subroutines", "objects", "inputs", "counters"]
RUN1 = "PROFILE:trace\tA\t1\t2\nPROFILE:trace\tB\t1\t1\n"
RUN2 = "a remark\nPROFILE:trace\tA\t1\t3"
BAD = "PROFILE:trace\tA\t1\t2\nPROFILE:trcae\tA\t1\t2\n"
TRY = "Try 'ptick-export --help' for more information.\n"


def source(*path):
    with open(os.path.join(SOURCE_DIR, *path), encoding="utf-8") as file:
        return file.read()


class ExportTest(CompanionTest):
    companion = "ptick-export"

    def setUp(self):
        super().setUp()
        self.write("run1", RUN1)
        self.write("run2", RUN2)
        self.write("bad", BAD)
        self.write("empty", "")

    def test_formats_and_tables_are_the_same_everywhere(self):
        text = self.run_it("--help").out.decode()
        notes = [" ".join(part.split()) for part in text.split("\n\n")]
        [formats] = [part for part in notes if part.startswith("Formats. ")]
        [tables] = [part for part in notes if part.startswith("Tables and their columns. ")]
        self.assertEqual(FORMATS, re.findall(r"(?:\. |; )(\w+):", formats))
        self.assertEqual(TABLES, re.findall(r"(?:\. |; )(\w+):", tables))
        page = source("docs", "ptick-export.1.in")
        for names, section in ((FORMATS, "FORMATS"), (TABLES, "TABLES")):
            self.assertEqual(names, re.findall(r"\.It Cm (\w+)", page.split(f".Sh {section}")[1].split(".Sh")[0]))
            words = re.sub(r"\s+", " ", source("completions", "ptick-export.bash"))
            self.assertIn(f"compgen -W '{' '.join(names)}'", words)
            self.assertIn(f"({' '.join(names)})", source("completions", "_ptick-export"))
            self.assertIn(f'-a "{" ".join(names)}"', source("completions", "ptick-export.fish"))
        for name in FORMATS:
            self.assertEqual(0, self.run_it("-t", name, "run1").status)
        for name in TABLES:
            result = self.run_it("--to=csv", "--table", name, "run1")
            columns = re.search(rf"\b{name}: ([\w,]+)", tables)[1]
            self.assertEqual((columns, b"", 0),
                             (result.out.decode().split("\r\n")[0], result.err, result.status))  # fmt: skip

    def test_wrong_use(self):
        for arguments, message in [
            ([], "missing operand"),
            (["run1"], "which format? --to=FORMAT is missing"),
            (["--to=json"], "missing operand"),
            (["--to=xml", "run1"], "option '--to': 'xml' is not one of " + ", ".join(
                f"'{name}'" for name in FORMATS[:-1]) + " or 'folded'"),
            (["--to=json", "--table=lines", "run1"], "--table goes with --to=csv only"),
            (["--to=folded", "-f", "none", "run1"],
             "cannot open the source folder 'none': No such file or directory"),
        ]:  # fmt: skip
            with self.subTest(arguments=arguments):
                result = self.run_it(*arguments)
                self.assertEqual((b"", 2), (result.out, result.status))
                first, rest = result.err.decode().split("\n", 1)
                self.assertEqual(TRY, rest)
                if "not one of" not in message:
                    self.assertEqual(f"ptick-export: {message}", first)
                else:
                    self.assertIn("'xml' is not", first)

    def test_reads_one_profile_as_it_is_and_several_merged(self):
        for arguments, want in [
            (["run1"], "A;1 2\nB;1 1\n"),
            (["run1", "run2"], "A;1 5\nB;1 1\n"),
            (["empty"], ""),
            (["empty", "/dev/null"], ""),
        ]:
            self.check(self.run_it("--to=folded", *arguments), want)
        self.check(self.run_piped(RUN2, "--to=folded", "run1", "-"), "A;1 5\nB;1 1\n")
        command = f"{path_of(self.companion)} --to=folded <(cat run1) <(cat run2)"
        self.check(self.run_program("bash", "-c", command), "A;1 5\nB;1 1\n")
        self.assertEqual("run1 ...", json.loads(self.run_it("-tjson", "run1", "run2").out)["profile"])
        self.assertEqual("standard input", json.loads(self.run_piped(RUN1, "-tjson", "-").out)["profile"])

    def test_trouble_leaves_no_result(self):
        self.write("old", "as it was")
        for arguments, message in [
            (["bad"], "bad: line 2: unknown record type: PROFILE:trcae ..."),
            (["run1", "bad"], "bad: line 2: unknown record type: PROFILE:trcae ..."),
            (["none"], "none: No such file or directory"),
            (["run1", "."], ".: Is a directory"),
        ]:
            for kind in FORMATS:
                for output in ([], ["-o", "old"], ["-o", "new"]):
                    with self.subTest(arguments=arguments, kind=kind, output=output):
                        result = self.run_it("--to", kind, *output, *arguments)
                        self.check(result, err=f"ptick-export: {message}\n", status=2)
        self.assertEqual(b"as it was", self.read("old"))
        self.assertEqual(sorted(["bad", "empty", "old", "run1", "run2"]), sorted(os.listdir(self.folder)))

    def test_writes_files(self):
        for kind in FORMATS:
            whole = self.run_it("--to", kind, "run1")
            result = self.run_it("--to", kind, "-o", "file", "run1")
            self.assertEqual((b"", whole.err, 0), (result.out, result.err, result.status))
            self.assertEqual(whole.out, self.read("file"))
        self.assertTrue(gzip.decompress(self.run_it("--to=pprof", "run1").out))

    def test_no_file_looks_whole_where_there_is_no_room(self):
        for kind in FORMATS:
            with open("/dev/full", "wb") as full:
                result = subprocess.run([path_of(self.companion), "--to", kind, "run1"], cwd=self.folder,
                                        stdout=full, stderr=subprocess.PIPE, check=False)  # fmt: skip
            self.assertEqual((b"ptick-export: standard output: No space left on device", 2),
                             (result.stderr.splitlines()[-1], result.returncode))  # fmt: skip
            # An instrumented program cannot write its counts there, either.
            command = f"export GCOV_ERROR_FILE=/dev/null; ulimit -f 0; {path_of(self.companion)} --to={kind} -o file run1"
            result = self.run_program("bash", "-c", command)
            self.assertEqual((b"ptick-export: file: File too large", 2),
                             (result.err.splitlines()[-1], result.status))  # fmt: skip
            self.assertNotIn("file", os.listdir(self.folder))

    def test_is_silent_where_its_reader_has_enough(self):
        big = "".join(f"PROFILE:trace\tPROGRAM\t{line}\t{line}\n" for line in range(1, 200_000))
        self.write("big", big)
        for kind in FORMATS:
            command = f"{path_of(self.companion)} --to={kind} big | head -c 1; echo ${{PIPESTATUS[0]}}"
            result = self.run_program("bash", "-c", command)
            err = b"" if kind != "trace" else result.err
            self.assertEqual((b"0\n", err), (result.out[1:], result.err))

    def test_a_terminal_gets_text_but_no_bytes(self):
        self.write("odd", b"PROFILE:trace\t\x1b[31m\xc2\x9b\t1\t2\nPROFILE:perform\tcmd\t\x1b]0;x\x07\n")
        for kind in FORMATS:
            terminal = Terminal([path_of(self.companion), "--to", kind, "odd"], self.folder, rows=40,
                                columns=200, **clean_environment())  # fmt: skip
            terminal.end()
            shown = terminal.output
            if kind == "pprof":
                self.assertIn(b"standard output: is a terminal", shown)
            self.assertNotIn(b"\x1b", shown, kind)
            self.assertNotIn(b"\x9b", shown, kind)
            self.assertNotIn(b"\x07", shown, kind)

    def test_names_sources(self):
        self.write("src/A", "PRINT 1\n")
        self.write("lib/A", "no\n")
        self.write("lib/B", "PRINT 2\n")
        options = ["-f", "src", "--source=lib/", "run1"]
        text = self.run_it("--to=callgrind", *options).out.decode()
        self.assertIn("\nfl=(1) src/A\nfn=(1) A\n", text)
        self.assertIn("\nfl=(2) lib/B\nfn=(2) B\n", text)
        frames = json.loads(self.run_it("--to=speedscope", *options).out)["shared"]["frames"]
        self.assertEqual(["src/A", "src/A", "lib/B", "lib/B"], [frame["file"] for frame in frames])

    def test_tells_which_parts_a_format_does_not_hold(self):
        self.write("all", RUN1 + "PROFILE:perform\tcmd\tX\nPROFILE:input\t13\t1\t5\t6\tx\n"
                   "PROFILE:subroutine_call\tA B\t2\nPROFILE:shared_object\tb.so\t1\nPROFILE:ticks\t3\n"
                   "PROFILE:hertz\t100\nPROFILE:read_count\t5\nPROFILE:user_ticks\t1\t5\n")  # fmt: skip
        left_out = {
            "callgrind": "1 command, 1 shared object, 1 input and 2 counters",
            "pprof": "1 command, 1 subroutine call, 1 shared object, 1 input and 2 counters",
            "speedscope": "1 subroutine call, 1 shared object, 1 input and 2 counters",
            "trace": "2 trace records, 1 subroutine call, 1 shared object and 2 counters",
            "folded": "1 command, 1 subroutine call, 1 shared object, 1 input and 2 counters",
        }
        for kind in FORMATS:
            result = self.run_it("--to", kind, "all")
            first = result.err.decode().split("\n")[0]
            want = left_out.get(kind)
            self.assertEqual("" if want is None else f"ptick-export: all: {kind} does not hold {want} of "
                             "this profile; json holds everything", first)  # fmt: skip
            self.assertEqual(0, result.status)

    def test_memory_is_near_that_of_the_report(self):
        with open(path_of(self.companion), "rb") as file:
            if b"__asan_init" in file.read():
                self.skipTest("sanitizers need memory of their own")
        lines = 400_000
        self.write("big", "".join(f"PROFILE:trace\tPROGRAM.{line % 97}\t{line % 9973}\t{line % 311}\n"
                                  for line in range(lines)))  # fmt: skip

        def peak(*words):
            text = "import resource,subprocess,sys; subprocess.run(sys.argv[1:],stdout=-3,stderr=-3);" \
                "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)"
            return int(self.run_program(sys.executable, "-c", text, *words).out)

        report = peak(os.path.abspath(os.environ["PTICK"]), "-n", "big")
        for kind in FORMATS:
            self.assertLess(peak(path_of(self.companion), "--to", kind, "big"), report + 12_000, kind)


if __name__ == "__main__":
    unittest.main()
