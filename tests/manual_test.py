"""Holds the manual page of ptick to the program: every message it explains is printed by a run, every
example works, and the numbers of errors have their names."""

import errno
import gzip
import os
import re
import shutil
import subprocess
import unittest

from faults.disturbed import FAULT_PRELOAD, PTICK_DYNAMIC
from support.ports import PortTest
from support.program import PTICK, SOURCE_DIR

PAGE = os.path.join(os.environ["PTICK_BUILD_DIR"], "ptick.1")
OUT, ERR = 1, 2


def rendered():
    """The page as a reader sees it, without emphasis."""
    process = subprocess.run(
        ["mandoc", "-T", "ascii", "-O", "width=80", PAGE], capture_output=True, check=True, text=True
    )
    return re.sub(".\b", "", process.stdout)


def section(text, name, indent=""):
    """The lines of a section, or of a subsection: up to the next line with as small an indent."""
    pattern = rf"^{indent}{name}\n(.*?)(?=^{indent.replace(' ', ' ?')}\S|\Z)"
    return re.search(pattern, text, re.MULTILINE | re.DOTALL)[1]


def heads(text):
    """What a list explains: its lines with the smaller indent."""
    return re.findall(r"^     (\S.*)$", text, re.MULTILINE)


# What each message looks like in a run: (message, arguments, stream, status). The folder has the profile
# "small", "bad" with a malformed line, source lists of 500 and 501 directories, and a peer on port 5.
MESSAGES = [
    ("Invalid argument", ["-x"], ERR, 1),
    ("Too many files specified with -f option", ["-F500", "-fsrc", "small"], ERR, 0),
    ("Too many files specified in file NAME", ["-F501", "small"], ERR, 1),
    ("ptick: [201] cannot open file 'NAME': REASON", ["-fnowhere", "small"], ERR, 0),
    ("ptick: [201] cannot open file 'NAME': REASON", ["nowhere/small"], ERR, 1),
    ("ptick: [201] cannot open file 'NAME': REASON", ["nowhere/small", "small"], ERR, 0),
    ("ptick: [202] cannot read record 'NAME' in 'DIRECTORY': REASON", ["none"], ERR, 1),
    ("ptick: [202] cannot read record 'NAME' in 'DIRECTORY': REASON", ["none", "small"], ERR, 0),
    ("No input files...", ["none", "none"], ERR, 2),
    ("Invalid format in profile file at line N", ["bad"], ERR, 2),
    ("Error! No 'hertz' is available in the profile output", ["-pv", "small"], ERR, 2),
    ("portno not set to numeric port number", ["-n", "-j", "ON", "5"], ERR, 2),
    ("The type should be ON or OFF", ["-j", "", "5"], ERR, 2),
    ("Invalid 'type' specified, should be ON or OFF", ["-j", "ONN", "5"], ERR, 2),
    ("Message sent successfully to port PORT", ["5", "STOP"], OUT, 0),
    ("Message sent successfully to N ports and failed to N ports", ["3-9", "STOP"], OUT, 0),
    ("Error number N sending message to port PORT", ["6", "STOP"], OUT, 0),
    ("ptick: Error number N executing command", ["-j", "OFF", "6"], OUT, errno.ENOENT),
    ("Keyboard profile written to 'NAME'", ["-kkeys", "small"], OUT, 0),
]

# The same where a call fails: (message, arguments, fault as tests/faults/fault_preload.cpp takes it).
# The status is 1 then.
FAILING = [
    ("ptick: cannot write: REASON", ["small"], f"write:{errno.ENOSPC}:1"),
    ("ptick: cannot run size: REASON", ["-ov", "run1"], f"clone:{errno.EAGAIN}:1+"),
    ("ptick: cannot run the shell: REASON", ["-kkeys", "small"], f"clone:{errno.EAGAIN}:1"),
    ("ptick: cannot write to the shell: REASON", ["-kkeys", "small"], f"write:{errno.EIO}:1"),
    ("ptick: out of memory", ["small"], f"malloc:{errno.ENOMEM}:1+"),
]



def as_pattern(message):
    """Matches what a run prints for a message."""
    pattern = re.escape(message).replace("REASON", r"\w[\w /]+")
    pattern = re.sub(r"\b(PORT|N)\b", r"[0-9]+", pattern)
    return "(?m)^" + re.sub(r"\b(NAME|DIRECTORY)\b", r"[^' ]+", pattern) + "$"


class ManualTest(PortTest):
    def setUp(self):
        super().setUp()
        text = rendered()
        self.diagnostics = section(text, "DIAGNOSTICS")
        self.examples = section(text, "EXAMPLES")
        sample = os.path.join(SOURCE_DIR, "examples", "orders")
        for name in ("src", "lib"):
            os.symlink(os.path.join(sample, name), os.path.join(self.folder, name))
        for name in ("run1", "run2", "run3"):
            shutil.copy(os.path.join(sample, "run1"), os.path.join(self.folder, name))
        self.write("small", "PROFILE:trace\tA\t1\t1\nPROFILE:input\t13\t1\t0\t0\tA\n")
        self.write("bad", "PROFILE:ticks\t1\nPROFILE:tciks\t1\n")
        self.write("500", "src\n" * 500)
        self.write("501", "src\n" * 501)

    def subsection(self, name):
        return heads(section(self.diagnostics, name, indent="   "))

    def test_all_messages_that_are_explained_are_those_of_runs(self):
        explained = self.subsection("On standard error") + self.subsection("On standard output")
        rows = {message for message, *_ in MESSAGES + FAILING}
        self.assertEqual(sorted(rows), sorted(explained))

    def test_runs_print_the_messages(self):
        self.peer(5)
        for message, arguments, stream, status in MESSAGES:
            with self.subTest(message=message, arguments=arguments):
                result = self.ptick(*arguments)
                printed = {OUT: result.out, ERR: result.err}[stream].decode()
                self.assertRegex(printed, as_pattern(message))
                self.assertEqual(status, result.status)

    def test_runs_in_which_a_call_fails_print_the_messages(self):
        for message, arguments, fault in FAILING:
            with self.subTest(message=message, fault=fault):
                result = self.run_program(
                    os.path.abspath(PTICK_DYNAMIC),
                    *arguments,
                    LD_PRELOAD=os.path.abspath(FAULT_PRELOAD),
                    PTICK_FAULT=fault,
                    PTICK_FAULT_MARK=os.path.join(self.folder, "struck"),
                )
                self.assertRegex(result.err.decode(), as_pattern(message))
                self.assertEqual(1, result.status)

    def test_error_numbers_have_their_names(self):
        listed = [head.split() for head in self.subsection("Error numbers") if head[0].isdigit()]
        self.assertGreater(len(listed), 5)
        for number, name in listed:
            self.assertEqual(int(number), getattr(errno, name))

    def test_examples_work(self):
        with gzip.open(os.path.join(self.folder, "run1.gz"), "wb") as packed:
            packed.write(self.read("run1"))
        for port in (3, 12):
            self.peer(port)
        path = os.path.dirname(os.path.abspath(PTICK)) + os.pathsep + os.environ["PATH"]
        commands = re.findall(r"^ +\$ (.*(?:\n {15}.*)*)$", self.examples, re.MULTILINE)
        self.assertEqual(8, len(commands))
        for command in commands:
            with self.subTest(command=command):
                result = self.run_program(
                    "bash", "-o", "pipefail", "-c", command, PATH=path, MAVRO_RUNTIME_DIR=self.runtime
                )
                self.assertEqual((b"", 0), (result.err, result.status))

    def test_names_are_filled_in(self):
        rows = self.run_ptick("run1").out.decode().splitlines()[2:]
        named, name = [], ""
        for row in rows:
            name = row[:20] if row[:20].strip() else name
            named.append(name + row[20:])
        want = [row for row in named if row.startswith("NIGHT.BATCH ")]
        self.assertGreater(len(want), sum(row.startswith("NIGHT.BATCH ") for row in rows))
        [command] = re.findall(r"^ +\$ (ptick run1 \| LC_ALL=C awk .*(?:\n {15}.*)*)$", self.examples,
                               re.MULTILINE)
        path = os.path.dirname(os.path.abspath(PTICK)) + os.pathsep + os.environ["PATH"]
        result = self.run_program("sh", "-c", command, PATH=path)
        self.assertEqual(want, result.out.decode().splitlines())

    def test_the_page_is_clean(self):
        result = self.run_program("mandoc", "-T", "lint", PAGE)
        self.assertEqual((b"", b"", 0), (result.out, result.err, result.status))


if __name__ == "__main__":
    unittest.main()
