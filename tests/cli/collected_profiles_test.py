"""Many profiles collected in few files, as docs/scale.md says: packed, piped, strung together."""

import gzip
import os
import re
import subprocess
import unittest

from support.documents import read
from support.program import PTICK, ProgramTest, clean_environment


def profile(number):
    """A small profile; those of different numbers share some keys."""
    return "".join(
        f"PROFILE:{record}\n"
        for record in (
            "program\tORDER.DESK",
            "hertz\t100",
            f"starttime\t{1773043331 - number}",
            f"trace\tORDER.DESK\t{number % 7}\t{number}",
            f"trace\tPROGRAM.{number % 5}\t1\t3",
            f"ticks\t{number + 3}",
            f"pid\t{number}",
        )
    )


class CollectedProfilesTest(ProgramTest):
    def setUp(self):
        super().setUp()
        texts = [profile(number) for number in range(40)]
        for number, text in enumerate(texts):
            self.write(f"2026-03-09/orders/m{number:02}", text)
        for day in (0, 1):
            packed = gzip.compress("".join(texts[20 * day : 20 * day + 20]).encode())
            self.write(f"orders-{day}.gz", packed)

    def shell(self, command):
        """The heading and the rows that a command prints."""
        process = subprocess.run(
            ["sh", "-c", command],
            cwd=self.folder,
            env=clean_environment(
                PATH=os.path.dirname(os.path.abspath(PTICK)) + os.pathsep + os.environ["PATH"]
            ),
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=60,
            check=True,
        )
        self.assertEqual(b"", process.stderr)
        heading, _, rows = process.stdout.decode().partition("\n")
        return heading, rows

    def test_all_ways_to_collect_give_the_same_report(self):
        for options in ("-nu", "-n", "", "-a", "-i"):
            _, want = self.shell(f"ptick {options} 2026-03-09/orders/*")
            self.assertGreater(want.count("\n"), 7)
            for command in (
                "cat 2026-03-09/orders/* >all; ptick OPTIONS all /dev/null",
                "cat 2026-03-09/orders/* | ptick OPTIONS /dev/stdin /dev/null",
                "zcat orders-*.gz | ptick OPTIONS /dev/stdin /dev/null",
                "find 2026-03-* -type f -print0 | sort -z | xargs -0 -n 7 cat |"
                " ptick OPTIONS /dev/stdin /dev/null",
            ):
                with self.subTest(command=command, options=options):
                    _, rows = self.shell(command.replace("OPTIONS", options))
                    self.assertEqual(want, rows)

    def test_a_missing_line_end_can_be_added(self):
        self.write("a", "PROFILE:ticks\t2\nPROFILE:trace\tA\t1\t1")
        self.write("b", "PROFILE:trace\tA\t1\t1\n")
        _, want = self.shell("ptick a b")
        self.assertIn("A                    1      2        100   ", want)
        _, rows = self.shell("awk 1 a b | ptick /dev/stdin /dev/null")
        self.assertEqual(want, rows)
        _, rows = self.shell("cat a b | ptick /dev/stdin /dev/null")
        self.assertNotEqual(want, rows)

    def test_one_file_alone_is_not_merged(self):
        _, merged = self.shell("cat 2026-03-09/orders/* >all; ptick all /dev/null")
        _, alone = self.shell("ptick all")
        self.assertGreater(alone.count("\n"), merged.count("\n"))

    def test_the_bad_file_is_found(self):
        self.write("2026-03-09/orders/m17", profile(17) + "PROFILE:tciks\t1\n")
        os.symlink("nowhere", os.path.join(self.folder, "2026-03-09/orders/m17.lost"))
        [line] = re.findall(r"^ *for profile in .*$", read("docs", "scale.md"), re.MULTILINE)
        result = self.run_program(
            "sh", "-c", line, PATH=os.path.dirname(os.path.abspath(PTICK)) + ":" + os.environ["PATH"]
        )
        self.assertEqual(b"in 2026-03-09/orders/m17\nin 2026-03-09/orders/m17.lost\n", result.out)
        self.assertIn(b"Invalid format in profile file at line 8\n\ttciks\t1\nptick: [202] ", result.err)

    def test_the_heading_names_what_came_first(self):
        heading, _ = self.shell("ptick 2026-03-09/orders/m03 /dev/null")
        self.assertIn("(unknown) from profile 2026-03-09/orders/m03 ...", heading)


if __name__ == "__main__":
    unittest.main()
