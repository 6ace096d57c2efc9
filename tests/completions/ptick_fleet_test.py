"""The completions of ptick-fleet in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import unittest

from support import completions

# Keys typed, and the arguments that come of them.
TYPED = [
    ("ptick-fleet me\tru\t1", ["merge", "run1"]),
    ("ptick-fleet merge --files0\tna\t", ["merge", "--files0-from=names"]),
    ("ptick-fleet merge --files-from=na\t", ["merge", "--files-from=names"]),
    ("ptick-fleet merge --keep\trun\t1", ["merge", "--keep-going", "run1"]),
    ("ptick-fleet merge --sched\ttcp run1", ["merge", "--scheduler=tcp", "run1"]),
    ("ptick-fleet merge --work-dir=my\trun1", ["merge", "--work-dir=my dir/run1"]),
    ("ptick-fleet merge -o na\trun\t2", ["merge", "-o", "names", "run2"]),
    ("ptick-fleet merge --color=nev\trun\t1", ["merge", "--color=never", "run1"]),
    ("ptick-fleet merge my\tf\t", ["merge", "my dir/file one"]),
]

# fish puts the value of an option that it has completed into a word of its own.
COMPLETED = ("--files0\t", "--sched\t")


def expected(shell):
    for keys, words in TYPED:
        if shell == "fish" and any(name in keys for name in COMPLETED):
            words = [words[0], *words[1].split("="), *words[2:]]
        yield keys, words


class FleetCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "names", "my dir/file one")
    typed = TYPED

    def expected(self, shell):
        return expected(shell)


if __name__ == "__main__":
    unittest.main()
