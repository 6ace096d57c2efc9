"""Profiles made to be slow cost what ordinary ones of their size cost. Most of them were quadratic once: the
bound is far above the noise of a busy machine, and far below what they took then."""

import os
import unittest

from support.program import PTICK, ProgramTest, clean_environment

NAMES = 60_000
ROWS = 5_000
LONG = 500_000


def old_mix(a, b):
    """How two words were hashed when everybody knew the numbers that go in."""
    product = (a ^ 0x2545F4914F6CDD1D) * (b ^ 0x9E3779B97F4A7C15)
    return (product ^ product >> 64) & 0xFFFFFFFFFFFFFFFF


def word(text):
    return int.from_bytes(text, "little")


def one_hash(before):
    """What makes the hash of names of 16 bytes more 0, whatever the last 8 are, after 0 or 8 others."""
    state = (len(before) + 16) << 56
    if before:
        state = old_mix(state, word(before))
    return (state ^ 0x2545F4914F6CDD1D).to_bytes(8, "little")


# In a merge the record type is part of a name; two letters fill its word.
HEADS = (b"trace\t%c%c" % (a, b) for a in range(65, 91) for b in range(65, 91))
HEAD = next(head for head in HEADS if min(one_hash(head)) > 32 and max(one_hash(head)) < 254)


def records(*texts):
    """Profile lines; a text may be bytes."""
    return b"".join(
        b"PROFILE:%b\n" % (text if isinstance(text, bytes) else text.encode()) for text in texts
    )


def names(start):
    return [start + b"%08d" % n for n in range(NAMES)]


def traces(programs):
    return records(*(b"trace\t%b\t1\t5" % program for program in programs))


def performs(commands):
    return records(*(b"perform\tcmd\t%b" % command for command in commands))


def calls(subroutines):
    return records(*(b"subroutine_call\tX %b\t1" % subroutine for subroutine in subroutines))


def rows(*head):
    return records(*head, *(f"trace\tA\t{n}\t5" for n in range(ROWS)))


def inputs(*head):
    return records(*head, *(f"input\t13\t1\t{n}\t{n + 1}\tx" for n in range(ROWS)))


def repeated(head, text):
    return records(head, *[text] * ROWS)


class LinearTimeTest(ProgramTest):
    def seconds(self, *arguments):
        """The processor time of a run, the best of two."""
        return min(self.one_run(arguments), self.one_run(arguments))

    def one_run(self, arguments):
        null = os.open(os.devnull, os.O_RDWR)
        self.addCleanup(os.close, null)
        pid = os.posix_spawn(
            os.path.abspath(PTICK),
            ["ptick", *arguments],
            clean_environment(),
            file_actions=[(os.POSIX_SPAWN_DUP2, null, stream) for stream in (0, 1)],
        )
        _, status, usage = os.wait4(pid, 0)
        self.assertEqual(0, status)
        return usage.ru_utime + usage.ru_stime

    def compare(self, *options, crafted, ordinary, merged=False):
        times = []
        for name, text in (("ordinary", ordinary), ("crafted", crafted)):
            path = self.write(name, text)
            more = [self.write("empty", "")] if merged else []
            times.append(self.seconds(*options, path, *more))
        self.assertLess(times[1], 4 * times[0] + 0.5, f"crafted and ordinary took {times[::-1]} s")

    def test_names_of_programs_commands_and_subroutines(self):
        crafted, ordinary = names(one_hash(b"")), names(b"ORDINARY")
        for profile, options in ((traces, ["-n"]), (performs, ["-p"]), (calls, ["-s"])):
            with self.subTest(profile=profile.__name__):
                self.compare(*options, crafted=profile(crafted), ordinary=profile(ordinary))

    def test_keys_of_a_merge(self):
        crafted, ordinary = names(HEAD[6:] + one_hash(HEAD)), names(b"ORDINARY..")
        self.compare(crafted=traces(crafted), ordinary=traces(ordinary), merged=True)

    def test_a_total_of_many_digits(self):
        for total in ("9" * LONG, "1." + "9" * LONG):
            self.compare(crafted=rows("ticks\t" + total), ordinary=rows("ticks\t9"))

    def test_a_clock_rate_of_many_digits(self):
        crafted, ordinary = "hertz\t" + "9" * LONG, "hertz\t9"
        self.compare(
            "-t", f"-k{self.folder}/keys", crafted=inputs(crafted), ordinary=inputs(ordinary)
        )
        commands = [f"perform\tstartclock\t{n}\tcmd\tX" for n in range(ROWS)]
        self.compare(
            "-pv", crafted=records(crafted, *commands), ordinary=records(ordinary, *commands)
        )

    def test_a_merged_value_of_many_digits(self):
        for kind, text, other in (
            ("startclock", "0" * LONG, "5"),
            ("endclock", "9" * LONG, "5"),
            ("endclock", "x" * LONG, "5"),
            ("usrcpu", "x" * LONG, "5"),
            ("usrcpu", "1." + "9" * LONG, "0.00001"),
            ("hertz", "9" * LONG, "5"),
        ):
            with self.subTest(kind=kind, text=text[:3]):
                line = f"{kind}\t{other}"
                self.compare(
                    crafted=repeated(f"{kind}\t{text}", line),
                    ordinary=repeated(f"{kind}\t9", line),
                    merged=True,
                )

    def test_a_source_line_that_many_rows_show(self):
        profile = records(*["trace\tPROG\t1\t5"] * ROWS)
        self.write("short/PROG", "short\n")
        self.write("long/PROG", "long " * LONG + "\n")
        path = self.write("run", profile)
        ordinary = self.seconds(f"-f{self.folder}/short", path)
        crafted = self.seconds(f"-f{self.folder}/long", path)
        self.assertLess(crafted, 4 * ordinary + 0.5)


if __name__ == "__main__":
    unittest.main()
