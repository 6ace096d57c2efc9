"""What is on the screen of a terminal, cell by cell, at each page of every report.

PTICK_SCREENS=all (tools/screens) tries all sizes, the tests a sample of them."""

import itertools
import os
import unittest

from support.program import SOURCE_DIR
from support.screen_case import ScreenTest

OPTIONS = ((), ("-n",), ("-p",), ("-pv",), ("-s",), ("-o",), ("-a",), ("-A",))
REPORTS = [(*options, "examples/orders/run1") for options in OPTIONS]
ALL = os.environ.get("PTICK_SCREENS") == "all"
HEIGHTS = range(1, 51) if ALL else (1, 2, 3, 5, 11, 24, 50)
WIDTHS = (*range(20, 201, 10), 43, 44, 79, 81, 82) if ALL else (20, 43, 80, 81, 200)
PAGES = 40 if ALL else 4


class SampleTest(ScreenTest):
    def setUp(self):
        super().setUp()
        self.place = SOURCE_DIR

    def test_every_page_is_in_view_with_its_prompt(self):
        for number, case in enumerate(itertools.product(REPORTS, HEIGHTS, WIDTHS)):
            if ALL or number % 2 == 0:
                arguments, rows, columns = case
                last_key = b"qc"[number // 2 % 2 :][:1]
                with self.subTest(arguments=arguments, rows=rows, columns=columns):
                    self.check_report(arguments, [(rows, columns)], b"\r \n", last_key, PAGES)

    def test_the_size_is_looked_at_again_for_each_page(self):
        for arguments in REPORTS:
            for sizes in (
                [(5, 80), (20, 80), (3, 80)],
                [(10, 80), (10, 40), (10, 200), (10, 20)],
                [(24, 80), (1, 20), (50, 132), (2, 43), (7, 81)],
            ):
                with self.subTest(arguments=arguments, sizes=sizes):
                    self.check_report(arguments, sizes)

    def test_a_page_is_in_view_wherever_the_cursor_was(self):
        for arguments in REPORTS:
            for shell in (b"$ ls\r\nrun1\r\n", b"$\r\n" * 30):
                with self.subTest(arguments=arguments, shell=shell):
                    self.check_report(arguments, [(12, 80)], shell=shell)

    def test_the_page_may_be_wider_or_narrower_than_the_terminal(self):
        for arguments in REPORTS:
            for width in ("40", "300"):
                with self.subTest(arguments=arguments, width=width):
                    pages = self.pages(arguments, width)
                    screen = self.start(arguments, 10, 80, COLUMNS=width)
                    page = pages.next(10, 80)
                    self.assertTrue(screen.wait_for_prompt())
                    self.check_page(screen, page)
                    screen.press(b"q")
                    self.assertEqual(0, screen.end())


if __name__ == "__main__":
    unittest.main()
