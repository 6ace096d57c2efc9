"""The completions of ptick-merge in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import unittest

from support import completions

# Keys typed, and the arguments that come of them.
TYPED = [
    ("ptick-merge ru\t1", ["run1"]),
    ("ptick-merge --files-from\tna\t", ["--files-from=names"]),
    ("ptick-merge --files0\tna\t", ["--files0-from=names"]),
    ("ptick-merge --files-from=na\t", ["--files-from=names"]),
    ("ptick-merge --keep\trun\t1", ["--keep-going", "run1"]),
    ("ptick-merge --prog\tna run1", ["--program=na", "run1"]),
    ("ptick-merge -o na\trun\t2", ["-o", "names", "run2"]),
    ("ptick-merge --color=nev\trun\t1", ["--color=never", "run1"]),
    ("ptick-merge --color al\trun\t1", ["--color", "always", "run1"]),
    ("ptick-merge my\tf\t", ["my dir/file one"]),
    ("ptick-merge -- -d\t", ["--", "-dash"]),
]


# fish puts the value of an option that it has completed into a word of its own.
COMPLETED = ("--files-from\t", "--files0\t", "--prog\t")


def expected(shell):
    for keys, words in TYPED:
        is_parted = shell == "fish" and any(name in keys for name in COMPLETED)
        yield keys, [*words[0].split("="), *words[1:]] if is_parted else words


class MergeCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "names", "my dir/file one", "-dash")
    typed = TYPED

    def expected(self, shell):
        return expected(shell)


if __name__ == "__main__":
    unittest.main()
