"""The programs that ptick is compared with, and the proof that they do the same work."""

import pathlib
import subprocess
import sys
import tempfile

import timing

OPTIONS = {
    "lines": (), "programs": ("-n",), "merge": (),
    "performs": ("-p",), "performs_merge": ("-p",), "perform_costs": ("-pv",),
    "subroutines": ("-s",), "objects": ("-o",), "inputs": ("-k/dev/null", "-t"),
}
PLAIN = ("lines", "programs")  # the works that plain C++ knows
SQL = ("lines", "programs", "merge")


class Programs:
    """Where everything that is measured lies."""

    def __init__(self, ptick, bench_build):
        self._ptick = ptick
        self._build = pathlib.Path(bench_build)
        self._here = pathlib.Path(__file__).resolve().parent.parent / "rivals"

    def generator(self):
        return self._build / "generate_profile"

    def ptick(self, *words):
        return timing.command("ptick", self._ptick, *words)

    def work(self, work, profiles):
        """ptick's own command for a work."""
        return self.ptick(*OPTIONS[work], *profiles)

    def fast(self, work, profiles):
        """The limits and the mark: the plain scan, wc, and plain C++ where it knows the work."""
        commands = [timing.command("plain scan", self._build / "plain_scan", *profiles),
                    timing.command("wc -l", "wc", "-l", *profiles)]
        if work in PLAIN:
            commands.append(timing.command(
                "plain C++", self._build / "plain_report", *OPTIONS[work], *profiles))
        return commands

    def slow(self, work, profiles):
        """What a user would do instead."""
        commands = [timing.command("sort + mawk", self._here / "sort_mawk", work, *profiles)]
        if work in SQL:
            commands.append(timing.command("sqlite3", self._here / "sqlite", work, *profiles))
        return commands

    def check_same_rows(self, work, profiles):
        """Exits unless all programs print ptick's rows."""
        if work == "inputs":
            rows = self._script_rows(profiles)
        else:
            rows = _output(self.work(work, profiles)).split(b"\n", 2)[2]
        same = [each for each in self.fast(work, profiles) if each.name == "plain C++"]
        for each in same + self.slow(work, profiles):
            if not rows or _output(each) != rows:
                sys.exit(f"{each.name} prints other rows than ptick: {' '.join(each.words)}")

    def _script_rows(self, profiles):
        """The replay script after its banner."""
        with tempfile.NamedTemporaryFile("rb") as script:
            _output(self.ptick(f"-k{script.name}", "-t", *profiles))
            return script.read().split(b"\n", 3)[3]


def _output(command):
    return subprocess.run(command.words, check=True, stdout=subprocess.PIPE).stdout
