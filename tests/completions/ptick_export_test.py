"""The completions of ptick-export in bash, zsh and fish: what real shells make of typed keys. That they
have the options of the program is looked at with those of all companions."""

import unittest

from support import completions

# Keys typed, and the arguments that come of them.
TYPED = [
    ("ptick-export ru\t1", ["run1"]),
    ("ptick-export --to=js\trun\t1", ["--to=json", "run1"]),
    ("ptick-export --to call\trun\t1", ["--to", "callgrind", "run1"]),
    ("ptick-export -t sp\trun\t1", ["-t", "speedscope", "run1"]),
    ("ptick-export --to=csv --table=com\trun\t1", ["--to=csv", "--table=commands", "run1"]),
    ("ptick-export --table sub\trun\t1", ["--table", "subroutines", "run1"]),
    ("ptick-export -f sr\t run1", ["-f", "src/", "run1"]),
    ("ptick-export -o ta\trun\t2", ["-o", "target", "run2"]),
    ("ptick-export --color=nev\trun\t1", ["--color=never", "run1"]),
    ("ptick-export my\tf\t", ["my dir/file one"]),
    ("ptick-export -- -d\t", ["--", "-dash"]),
]


class ExportCompletionsTest(completions.CompletionsTest):
    files = ("run1", "run2", "target", "my dir/file one", "src/A", "-dash")
    typed = TYPED


if __name__ == "__main__":
    unittest.main()
