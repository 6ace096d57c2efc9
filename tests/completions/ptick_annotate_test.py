"""The completions of ptick-annotate in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import unittest

from support import completions

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


class AnnotateCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "out", "src.txt", "src/A", "-dash")
    typed = TYPED


if __name__ == "__main__":
    unittest.main()
