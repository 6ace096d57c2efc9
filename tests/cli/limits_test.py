"""Lines, fields, names and numbers without measure: an exact result or a clear refusal, in memory of a
few times the longest line. PTICK_LIMITS=all (tools/limits) takes the full sizes, the tests smaller
ones."""

import os
import unittest

from support.program import PTICK, ProgramTest

ALL = os.environ.get("PTICK_LIMITS") == "all"
SCALE = 1 if ALL else 50
LINE = 100_000_000 // SCALE
NAME = 10_000_000 // SCALE
FIELDS = 1_000_000 // SCALE
ARGUMENTS = 100_000 // SCALE
BASE = 64 << 20  # what a run may take besides its lines
COLUMNS = "Source name          Line#  Ticks    %      \n"
NUMBERS = [
    "9223372036854775807",
    "9223372036854775808",
    "-9223372036854775808",
    "-9223372036854775809",
    "18446744073709551616",
    "9" * 30,
    "9" * 400,
    "0." + "0" * 400 + "1",
]
WORDS_OF_NO_NUMBER = (b"inf", b"nan", b"e+", b"E+")


def sanitized():
    """Whether the program reserves memory that it does not use."""
    with open(PTICK, "rb") as file:
        return b"__asan_init" in file.read()


def heading(width, title="Profile of program (unknown) from profile run"):
    return title + " " * (width - 1 - len(title) - 15) + " Page 1\n" + COLUMNS


class LimitsTest(ProgramTest):
    def bounded(self, memory, *arguments, **environment):
        """A run with so many bytes of memory besides what every run may take."""
        if sanitized():
            return self.run_ptick(*arguments, **environment)
        program, limit = os.path.abspath(PTICK), (BASE + memory) // 1024
        path = self.write("bounded", f'#!/bin/sh\nulimit -v {limit}\nexec "{program}" "$@"\n')
        os.chmod(path, 0o755)
        return self.run_program(path, *arguments, **environment)

    def check(self, result, out, err="", status=0):
        """Compares in a way that does not print megabytes."""
        out, err = out.encode(), err.encode()
        self.assertEqual((err[:500], status), (result.err[:500], result.status))
        self.assertEqual((len(out), len(err)), (len(result.out), len(result.err)))
        self.assertTrue(out == result.out and err == result.err, "other bytes")

    def test_a_line_of_any_length_that_is_no_record_is_skipped(self):
        row = "PROFILE:trace\tA\t1\t5\n"
        for text in ("x" * LINE + "\n" + row, row + "\t" * LINE, row + "PROFILE" + ":" * LINE):
            self.write("run", text)
            result = self.bounded(5 * LINE, "run")
            if text.endswith(":"):
                self.assertEqual((2, b""), (result.status, result.out))
                self.assertTrue(result.err.startswith(b"Invalid format in profile file at line 2\n"))
            else:
                self.check(result, heading(80) + "A" + " " * 20 + "1      5        0     \n")

    def test_a_text_of_any_length_is_printed_whole(self):
        self.write("run", "PROFILE:resource\t" + "r" * LINE + "\n")
        result = self.bounded(6 * LINE, "-a", "run")
        self.assertEqual((0, b""), (result.status, result.err))
        self.assertIn(b"r" * LINE + b"\n", result.out)

    def test_a_line_may_have_any_number_of_fields(self):
        self.write("run", "PROFILE:trace\tA\t1\t5" + "\tx" * FIELDS + "\n")
        self.check(
            self.bounded(20 * FIELDS, "run"),
            heading(80) + "A" + " " * 20 + "1      5        0     \n",
        )
        pairs = "\tother\t1" * FIELDS
        self.write("run", f"PROFILE:hertz\t100\nPROFILE:perform{pairs}\tcmd\tLATE\n")
        result = self.bounded(60 * FIELDS, "-pv", "run")
        self.assertEqual((0, b""), (result.status, result.err))
        self.assertNotIn(b"LATE", result.out, "keys are read up to field 1000")

    def test_a_name_of_any_length_is_cut_to_its_column(self):
        name = "N" * NAME
        self.write("run", f"PROFILE:trace\t{name}\t1\t5\nPROFILE:trace\t{name}M\t1\t6\n")
        result = self.bounded(10 * NAME, "-n", "run")
        self.assertEqual((0, b""), (result.status, result.err))
        rows = [line for line in result.out.split(b"\n") if line.startswith(b"N")]
        self.assertEqual(
            [b"N" * 20 + b" 1      %d        0     " % ticks for ticks in (5, 6)], rows
        )

    def test_a_path_of_any_length_is_refused(self):
        for folder in ("/".join(["x" * 250] * 15), "x" * 100_000):
            result = self.run_ptick("-s", folder + "/run")
            reason = "No such file or directory" if len(folder) < 4096 else "File name too long"
            self.check(result, "", f"ptick: [201] cannot open file '{folder}': {reason}\n", 1)

    def test_keyboard_input_of_any_length_is_replayed(self):
        text = 'a"' * (NAME // 2)
        self.write("run", f"PROFILE:input\t13\t1\t1\t1\t{text}\n")
        result = self.bounded(12 * NAME, "-kkeys", "run")
        self.check(result, "Keyboard profile written to 'keys'\n")
        script = self.read("keys")
        self.assertTrue(script.endswith(b'\n*\nINPUT "' + b'a~"' * (NAME // 2) + b'"\n'))

    def test_arguments_in_any_number(self):
        self.write("r", "PROFILE:ticks\t4\nPROFILE:trace\tA\t1\t3\n")
        rows = f"A{' ' * 20}1      {3 * ARGUMENTS:<8} 75    \n"
        title = "Profile of program (unknown) from profile r ..."
        self.check(self.run_ptick(*["r"] * ARGUMENTS), heading(80, title) + rows)
        self.check(
            self.run_ptick(*["x"] * ARGUMENTS),
            "",
            "ptick: [202] cannot read record 'x' in '.': No such file or directory\n" * ARGUMENTS + "No input files...\n",
            2,
        )
        flags = self.run_ptick(*["-i"] * ARGUMENTS, "-" + "u" * 100_000, "r")
        self.assertEqual((0, b""), (flags.status, flags.err))

    def test_a_list_holds_at_most_500_source_files(self):
        self.write("run", "PROFILE:trace\tA\t1\t5\n")
        for count, want in ((500, 0), (501, 1), (100_000, 1), (10_000_000 // SCALE, 1)):
            self.write("list", ".\n" * count)
            result = self.run_ptick("-Flist", "run")
            with self.subTest(count=count):
                err = b"Too many files specified in file list\n" if want else b""
                self.assertEqual((want, err), (result.status, result.err))

    def test_sources_of_any_size_take_no_memory(self):
        self.write("run", "PROFILE:ticks\t3\nPROFILE:trace\tA\t2\t1\nPROFILE:trace\tB\t1\t1\n")
        self.write("src/A", "x" * LINE + "\n" + " y" * LINE + "\n")
        self.write("src/B", "line" * 10 + "\n" + "z\n" * 10_000_000)
        rows = f"B{' ' * 20}1      1        33.33  {('line' * 10)[:35]}\n"
        rows += f"A{' ' * 20}2      1        33.33  {('y ' * 18)[:35]}\n"
        want = heading(80).replace("%      \n", "%      Source\n") + rows
        self.check(self.bounded(0, "-fsrc", "run"), want)

    def test_the_page_width_has_ends(self):
        self.write("run", "")
        for columns, width in (
            ("1", 1),
            ("60", 60),
            ("32767", 32767),
            ("0", 80),
            ("32768", 80),
            ("9" * 20, 80),
            ("-1", 80),
            ("1.5", 80),
            ("", 80),
        ):
            with self.subTest(columns=columns):
                self.check(self.run_ptick("run", COLUMNS=columns), heading(width))

    def test_numbers_of_any_size_are_numbers_in_every_report(self):
        keys = "ticks hertz pagesize memused memfree starttime endtime startclock endclock usrcpu syscpu"
        keys += " ticks_index index_count ticks_trigger trigger_count read_count write_count pid ppid"
        keys += " delete_count clearfile_count open_count input_count portno typerate"
        for number in NUMBERS:
            lines = [f"{key}\t{number}\t{number}" for key in keys.split()]
            lines += [f"trace\tA\t{line}\t{number}" for line in (1, number)]
            lines += [f"user_ticks\t{index}\t{number}" for index in (1, 1, number)]
            lines += [f"shared_object\tlib\t{number}", f"subroutine_call\tA B\t{number}"]
            pairs = "startclock endclock starttime endtime ticks usrcpu syscpu type".split()
            lines += ["perform\t" + "\t".join(f"{key}\t{number}" for key in pairs) + "\tcmd\tX"]
            lines += [f"input\t{number}\t{number}\t{number}\t-1\ttext"] * 2
            self.write("run", "".join(f"PROFILE:{line}\n" for line in lines))
            for options in ("-n -f.", "-nui", "-a", "-pv", "-s", "-Av", "-kkeys", "-tkkeys"):
                for names in (["run"], ["run", "run"]):
                    with self.subTest(number=number[:25], options=options, names=names):
                        self.check_numbers(self.run_ptick(*options.split(), *names))

    def check_numbers(self, result):
        script = self.read("keys") if result.out.startswith(b"Keyboard") else b""
        self.assertEqual((0, b""), (result.status, result.err))
        for word in WORDS_OF_NO_NUMBER:
            self.assertNotIn(word, result.out + script)

    def test_ticks_of_any_size_are_printed_exactly(self):
        for ticks in NUMBERS[:2]:
            self.write("run", f"PROFILE:trace\tA\t{ticks}\t{ticks}\nPROFILE:ticks\t{ticks}\n")
            result = self.run_ptick("run")
            with self.subTest(ticks=ticks):
                self.check(result, heading(80) + f"A{' ' * 20}{ticks[:6]} {ticks[:8]} 100   \n")

    def test_ports_of_any_size_are_refused(self):
        for number in NUMBERS[:2] + NUMBERS[4:7]:
            environment = {"MAVRO_RUNTIME_DIR": self.folder}
            with self.subTest(number=number[:25]):
                self.check(
                    self.run_ptick(number, "X", **environment),
                    f"Error number 22 sending message to port {number}\n",
                )
                self.check(
                    self.run_ptick("-j", "OFF", number, **environment),
                    "ptick: Error number 22 executing command\n",
                    status=22,
                )
                result = self.run_ptick(f"{number}-{number}", "X", **environment)
                self.assertEqual((0, b""), (result.status, result.err))
                result = self.run_ptick(f"0-{number}", "X", **environment)
                self.assertEqual((0, b""), (result.status, result.err))
                self.assertIn(b"successfully to 0 ports and failed to", result.out)


if __name__ == "__main__":
    unittest.main()
