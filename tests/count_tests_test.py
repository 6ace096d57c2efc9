"""The last line of ./test counts what ran."""

import os
import unittest

from support.program import SOURCE_DIR, ProgramTest

GTEST = """\
1/3 Testing: unit/0
[==========] 74 tests from 61 test suites ran. (549 ms total)
[  PASSED  ] 72 tests.
[  SKIPPED ] 2 tests, listed below:
[  SKIPPED ] PortEndpoint.TakesLongPackets
"""
OWN_COUNT_OF_NONE = """\
2/3 Testing: fuzz/lists
3/3 Testing: fuzz/masks
"""
UNITTEST = """\
Ran 1 test in 0.630s

OK
----
Ran 12 tests in 1.721s

OK (skipped=3)
"""


class CountTestsTest(ProgramTest):
    def test_it_adds_up_what_passed(self):
        for texts, want in (
            (["1/1 Testing: fuzz/lists\n"], "tests: 1 passed, 0 failed\n"),
            ([UNITTEST], "tests: 10 passed, 0 failed, 3 skipped\n"),
            ([GTEST + OWN_COUNT_OF_NONE], "tests: 74 passed, 0 failed, 2 skipped\n"),
            ([OWN_COUNT_OF_NONE, UNITTEST, GTEST], "tests: 84 passed, 0 failed, 5 skipped\n"),
        ):
            logs = [self.write(f"log{number}", text) for number, text in enumerate(texts)]
            with self.subTest(texts=texts):
                result = self.run_program(os.path.join(SOURCE_DIR, "tests/count_tests"), *logs)
                self.assertEqual(want, result.out.decode())


if __name__ == "__main__":
    unittest.main()
