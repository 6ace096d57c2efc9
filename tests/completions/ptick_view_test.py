"""The completions of ptick-view in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import unittest

from support import completions

# Keys typed, and the arguments that come of them.
TYPED = [
    ("ptick-view ru\t1", ["run1"]),
    ("ptick-view --op\trun\t1", ["--open", "run1"]),
    ("ptick-view --baseline=run\t1 run2", ["--baseline=run1", "run2"]),
    ("ptick-view --baseline run\t1 run2", ["--baseline", "run1", "run2"]),
    ("ptick-view -f sr\t run1", ["-f", "src/", "run1"]),
    ("ptick-view -o ta\trun\t2", ["-o", "target", "run2"]),
    ("ptick-view --color=nev\trun\t1", ["--color=never", "run1"]),
    ("ptick-view my\tf\t", ["my dir/file one"]),
    ("ptick-view -- -d\t", ["--", "-dash"]),
]


class ViewCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "target", "my dir/file one", "src/A", "-dash")
    typed = TYPED


if __name__ == "__main__":
    unittest.main()
