"""A keyboard replay script holds what was typed: decoding it gives the recorded bytes back."""

import random
import re
import unittest

from support.program import ProgramTest

LINE_ENDS = (10, 254)  # a profile line ends at either, so no text holds them
RETURN = (10, 13)


def decoded(line):
    """The bytes that an INPUT line types, and whether it ends with Return."""
    typed, suffix = re.fullmatch(rb'INPUT "(.*)"( NOCR)?', line).groups()
    escape = re.compile(rb'~(?:(["~])|(\d\d\d))')
    return escape.sub(lambda m: m[1] or bytes([int(m[2])]), typed), suffix is None


class ReplayScriptTest(ProgramTest):
    def script(self, inputs):
        """The INPUT lines for records of (terminator, text)."""
        records = (b"PROFILE:input\t%d\t%d\t1\t2\t%s\n" % (end, len(text), text)
                   for end, text in inputs)
        self.write("run", b"".join(records))
        result = self.run_ptick("-kscript", "run")
        self.assertEqual(0, result.status, result)
        lines = self.read("script").splitlines()
        self.assertTrue(all(32 <= byte < 127 for line in lines[3:] for byte in line))
        return [line for line in lines if line.startswith(b"INPUT ")]

    def check(self, inputs):
        for (end, text), line in zip(inputs, self.script(inputs), strict=True):
            ended = end in RETURN
            typed = text if ended or end == 0 else text + bytes([end])
            self.assertEqual((typed, ended), decoded(line), (end, text))

    def test_every_byte_comes_back(self):
        self.check([(13, b"a" + bytes([byte]) + b"z")
                    for byte in range(256) if byte not in LINE_ENDS])

    def test_every_terminator_comes_back(self):
        self.check([(end, b"text") for end in range(256)])

    def test_any_text_comes_back(self):
        choice = random.Random(1)
        letters = [byte for byte in range(256) if byte not in LINE_ENDS and byte != 9]
        texts = [bytes(choice.choice(letters + [34, 126] * 20) for _ in range(choice.randrange(60)))
                 for _ in range(500)]
        self.check([(choice.choice((0, 9, 10, 13, 27, 126)), text) for text in texts])


if __name__ == "__main__":
    unittest.main()
