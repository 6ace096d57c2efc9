"""The completions of ptick-diff in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import unittest

from support import completions

# Keys typed, and the arguments that come of them.
TYPED = [
    ("ptick-diff ru\t1 ru\t2", ["run1", "run2"]),
    ("ptick-diff --by=pro\tru\t1", ["--by=program", "run1"]),
    ("ptick-diff --by co\t", ["--by", "co"]),
    ("ptick-diff --by cou\tru\t1", ["--by", "counter", "run1"]),
    ("ptick-diff --sort=rel\tru\t1", ["--sort=relative", "run1"]),
    ("ptick-diff --norm\tru\t1", ["--normalize", "run1"]),
    ("ptick-diff --js\tru\t1 --vs ru\t2", ["--json", "run1", "--vs", "run2"]),
    ("ptick-diff --top al\tru\t1", ["--top", "all", "run1"]),
    ("ptick-diff --old-source=my\t", ["--old-source=my dir/"]),
    ("ptick-diff --new-source my\t", ["--new-source", "my dir/"]),
    ("ptick-diff --fail-slower=5 ru\t1", ["--fail-slower=5", "run1"]),
    ("ptick-diff -o na\tru\t1", ["-o", "names", "run1"]),
    ("ptick-diff --color=nev\tru\t1", ["--color=never", "run1"]),
    ("ptick-diff my\tf\t run1", ["my dir/file one", "run1"]),
    ("ptick-diff -- -d\t", ["--", "-dash"]),
]


class DiffCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "names", "my dir/file one", "-dash")
    typed = TYPED


if __name__ == "__main__":
    unittest.main()
