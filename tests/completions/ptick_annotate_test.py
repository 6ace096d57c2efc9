"""The completions of ptick-annotate in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
from support.program import ProgramTest  # noqa: E402
from support.shells import Shell  # noqa: E402

# Keys typed, and the arguments that come of them. A folder gets its slash and no blank.
TYPED = [
    ("ptick-annotate ru\t1", ["run1"]),
    ("ptick-annotate -f sr\t run1", ["-f", "src/", "run1"]),
    ("ptick-annotate --source=sr\t run1", ["--source=src/", "run1"]),
    ("ptick-annotate -c 2 run\t1", ["-c", "2", "run1"]),
    ("ptick-annotate --al\trun\t1", ["--all", "run1"]),
    ("ptick-annotate -p src ru\t2", ["-p", "src", "run2"]),
    ("ptick-annotate --color=nev\trun\t1", ["--color=never", "run1"]),
    ("ptick-annotate -o ou\trun\t2", ["-o", "out", "run2"]),
    ("ptick-annotate -- -d\t", ["--", "-dash"]),
]


class CompletionsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ("run1", "run2", "out", "src.txt", "-dash"):
            self.write("work/" + name, "")
        os.mkdir(os.path.join(self.folder, "work", "src"))

    def check(self, name):
        shell = Shell(name, self.folder)
        typed = [(keys, shell.arguments(keys)) for keys, _ in TYPED]
        self.assertEqual(0, shell.close())
        self.assertEqual(TYPED, typed)

    def test_bash(self):
        self.check("bash")

    def test_bash_without_the_package_bash_completion(self):
        self.check("bash alone")

    def test_zsh(self):
        self.check("zsh")

    def test_fish(self):
        self.check("fish")


if __name__ == "__main__":
    unittest.main()
