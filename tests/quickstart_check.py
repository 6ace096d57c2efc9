"""Runs ./quickstart on a terminal, as a newcomer does, and then what it says to try next. Not one of
the tests that ctest runs: it configures their folder anew."""

import os
import re
import subprocess
import unittest

from support.documents import read
from support.program import SOURCE_DIR, ProgramTest, clean_environment
from support.terminal import Terminal

SHOWN = 14  # the heading and a dozen rows


class QuickstartTest(ProgramTest):
    def quickstart(self, folder):
        """What it shows when it is started in a folder; nobody presses a key."""
        path = os.path.join(SOURCE_DIR, "quickstart")
        terminal = Terminal([path], folder, rows=24, columns=100)
        self.assertEqual(0, terminal.end())
        return terminal.output.decode()

    def shell(self, commands):
        return subprocess.run(
            ["sh", "-c", commands],
            cwd=SOURCE_DIR,
            env=clean_environment(),
            capture_output=True,
            check=True,
            text=True,
        ).stdout

    def test_it_says_beforehand_what_it_takes(self):
        before = self.quickstart(SOURCE_DIR).partition("\n\n")[0]
        for words in ("g++, cmake and ninja-build", "MB to fetch", "MB on the disk", "a minute"):
            self.assertIn(words, before)

    def test_its_text_fits_a_terminal(self):
        text = self.quickstart(SOURCE_DIR)
        own = text.partition("\n\n")[0], text.partition("\nThe hot lines")[2]
        self.assertLess(max(map(len, "\n".join(own).splitlines())), 80)

    def test_it_shows_the_hot_lines_only(self):
        _, _, after = self.quickstart(SOURCE_DIR).partition("\n$ build/release/ptick ")
        shown = after.splitlines()[1:]
        report = read("tests/golden/lines/sample-source/expected").splitlines()
        self.assertEqual(report[:SHOWN] + [""], shown[: SHOWN + 1])

    def test_what_it_says_to_try_next_works_as_it_is_typed(self):
        _, _, after = self.quickstart(SOURCE_DIR).partition("\nWhat to try next:\n")
        by_program, in_all, path = re.findall(r"^  (\S.*)$", after, re.MULTILINE)
        self.assertIn("\nNIGHT.BATCH ", self.shell(by_program))
        self.assertIn("\nCPU usage ", self.shell(in_all))
        found = self.shell(f"{path}\ncommand -v ptick; command -v port_listener")
        folder = os.path.join(SOURCE_DIR, "build/release")
        self.assertEqual(f"{folder}/ptick\n{folder}/port_listener\n", found)

    def test_from_elsewhere_it_says_where_that_is(self):
        self.assertIn(f"\nWhat to try next, in {SOURCE_DIR}:\n", self.quickstart(self.folder))


if __name__ == "__main__":
    unittest.main()
