"""Names and texts that are wide, combined or hostile, on the screen of a terminal."""

import os
import unittest

from support.screen_case import ScreenTest, harmless

REPORTS = [(option, "{}") for option in ("-i", "-n", "-p", "-pv", "-s", "-o", "-a", "-A", "-nfsrc")]
SIZES = [(8, columns) for columns in (20, 21, 40, 43, 44, 80, 81, 132)]

WIDE = [
    "é" * 9,
    "è" * 6,  # an accent by itself
    "订单处理",
    "注文",
    "주문처리",
    "ＡＢＣ",
    "x订y单",
    "😀😀😀",
    "अनुक्रम",
    "Ж",
]
HOSTILE = [
    b"\x1b[2J\x1b[H",
    b"\x1b]0;title\x07",
    b"\x9b2J",
    b"\xc2\x9b2J\xc2\x85",
    b"a\rb\bc\x0b\x0cd",
    b"\x0e\x0f\x00\x7f",
    "abc\u202edef".encode(),
    "\u2066x\u2069\u200bx\u200e\ufeff".encode(),
    "\u2028\u2029\U000e0041".encode(),
    b"\xe2\x80",
    b"\xf0\x9f\x98 \xff\xc0\xaf",
    b"\xed\xa0\x80\xf5",
]


def profile_of(names):
    """A profile that has each name in every place where a report shows one."""
    lines = [b"PROFILE:ticks\t100", b"PROFILE:hertz\t100", b"PROFILE:program\t" + b" ".join(names)]
    for number, name in enumerate(names):
        lines += [
            b"PROFILE:trace\t%s\t%d\t%d" % (name, number, number),
            b"PROFILE:shared_object\t%s\t1" % name,
            b"PROFILE:subroutine_call\tA %s\t%d" % (name, number),
            b"PROFILE:perform\tstartclock\t1\tendclock\t%d\tcmd\tLIST %s %s" % (number, name, name),
        ]
    return b"\n".join(lines) + b"\n"


class NamesTest(ScreenTest):
    def check_names(self, names, profile_name):
        self.write(profile_name, profile_of(names))
        for name in names:
            if b"\0" not in name:
                self.write("src/" + os.fsdecode(name), b"text of %s\n" % name * 20)
        for report in REPORTS:
            arguments = [argument.format(profile_name) for argument in report]
            for size in SIZES:
                with self.subTest(arguments=arguments, size=size):
                    output = self.check_report(arguments, [size], most=3)
                    self.check_bytes(output)

    def check_bytes(self, output):
        """Nothing but the clearing of prompts drives the terminal."""
        text = output.replace(b"\r\x1b[K", b"").replace(b"\r\n", b"\n")
        self.assertEqual(harmless(text), text)

    def test_wide_and_combined_names_take_the_cells_they_take(self):
        self.check_names([name.encode() for name in WIDE], "注文é.run")

    def test_hostile_names_show_as_question_marks(self):
        self.check_names(HOSTILE, "run\x1b[31m\u202e")

    def test_hostile_diagnostics_show_as_question_marks(self):
        self.write("bad", b"PROFILE:\x1b[2J\xc2\x9b\t1\t\xe2\x80\xae\x9b\n")
        for arguments, want in (
            (["bad"], "        ?[2J?   1       ??"),
            (["none\x1b[2J\u202e"], "'none?[2J?'"),
            (["no\x07\x9f/run"], "'no??'"),
            (["-fno\x1bsource", "bad"], "'no?source'"),
            (["-Fno\u200bsource", "bad"], "'no?source'"),
        ):
            screen = self.start(arguments, 6, 80)
            status = screen.end()
            with self.subTest(arguments=arguments):
                self.check_bytes(screen.output)
                self.assertIn(status, (1, 2))
                self.assertIn(want, "\n".join(screen.rows()))

    def test_elsewhere_than_on_a_terminal_every_byte_is_as_it_is(self):
        self.write("run", profile_of(HOSTILE))
        out = self.run_ptick("-i", "run").out
        for name in HOSTILE:
            self.assertIn(name[:20], out)
        self.write("bad", b"PROFILE:\x1b[2J\xc2\x9b\t1\n")
        self.assertIn(b"\n\t\x1b[2J\xc2\x9b\t1\n", self.run_ptick("bad").err)


if __name__ == "__main__":
    unittest.main()
