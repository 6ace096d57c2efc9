"""Tests of what is on a terminal's screen: every page of a report is made again from what the program
prints elsewhere than on a terminal, and looked for on the screen."""

import os

from support.program import PTICK, ProgramTest
from support.screen import Screen, prompt_for, rows_of

OTHER_KEYS = b"xyzCQ\t\x1b[A\x1bOq\x1bc"


def harmless(text):
    """A text as a terminal may show it."""

    def shown(character):
        code = ord(character)
        if 0xDC80 <= code <= 0xDCFF:  # a byte that is no character
            code -= 0xDC00
        harmful = (
            (code < 32 and character not in "\t\n")
            or 0x7F <= code <= 0x9F
            or 0x200B <= code <= 0x200F
            or 0x2028 <= code <= 0x202E
            or 0x2060 <= code <= 0x2069
            or code == 0xFEFF
            or 0xE0000 <= code <= 0xE007F
        )
        return "?" if harmful else character

    characters = text.decode("utf-8", "surrogateescape")
    return "".join(map(shown, characters)).encode("utf-8", "surrogateescape")


class Pages:
    """The pages that a report should have, one after the other."""

    def __init__(self, text, has_heading):
        self.lines = harmless(text).decode("utf-8", "replace").split("\n")[:-1]
        self.heading = [self.lines.pop(0), self.lines.pop(0)] if has_heading else []
        self.number = 0
        self.pauses = True

    def next(self, rows, columns):
        """The rows of the next page on a screen of that size."""
        self.number += 1
        page = []
        if self.heading:
            title, titles_of_columns = self.heading
            page += rows_of(title.removesuffix("1") + str(self.number), columns)
            page += rows_of(titles_of_columns, columns)
        room = rows - 1 if self.pauses else rows
        is_first = True
        while self.lines and (is_first or len(page) + len(rows_of(self.lines[0], columns)) <= room):
            page += rows_of(self.lines.pop(0), columns)
            is_first = False
        return page


def last(rows, count):
    """As many of the last rows as there are."""
    return rows[max(len(rows) - count, 0) :]


class ScreenTest(ProgramTest):
    """`place` is where the program runs."""

    def setUp(self):
        super().setUp()
        self.place = self.folder

    def start(self, arguments, rows, columns, **settings):
        return Screen([os.path.abspath(PTICK), *arguments], self.place, rows, columns, **settings)

    def pages(self, arguments, columns):
        folder, self.folder = self.folder, self.place
        text = self.run_ptick(*arguments, COLUMNS=str(columns)).out
        self.folder = folder
        return Pages(text, has_heading=not {"-a", "-A"} & set(arguments))

    def check_page(self, screen, page):
        """The page is in view, its prompt on the last row. Returns what is left without the prompt."""
        rows, columns = screen.size()
        page = page + [""] * (rows - 1 - len(page))
        prompt = prompt_for(columns)
        self.assertEqual(last(page, rows - 1) + [prompt], screen.rows())
        self.assertEqual((rows - 1, len(prompt)), screen.cursor())
        return last(page, rows - 1) + [""]

    def check_left(self, screen, left):
        """Nothing has changed on the screen but that the prompt has gone, and the cursor is on the
        row that it leaves."""
        self.assertEqual(left, screen.rows())
        self.assertEqual((len(left) - 1, 0), screen.cursor())

    def check_end(self, screen, page):
        """The run has come to its end, its last page is in view, the cursor on the row below."""
        row, column = screen.cursor()
        self.assertEqual(0, column)
        self.assertEqual("", screen.rows()[row])
        self.assertEqual(last(page, row), last(screen.rows()[:row], len(page)))
        self.assertEqual(screen.before, screen.after)

    def check_report(self, arguments, sizes, keys=b"\r", last_key=b"q", most=4, **settings):
        """Reads a report page by page, `most` pages of it, on a terminal that takes the next of the
        sizes after each page. Returns all that the program has written."""
        screen = self.start(arguments, *sizes[0], **settings)
        try:
            self.read_report(screen, self.pages(arguments, sizes[0][1]), sizes, keys, last_key, most)
        except AssertionError:
            screen.abandon()
            raise
        return screen.output

    def read_report(self, screen, pages, sizes, keys, last_key, most):
        for number in range(most):
            page = pages.next(*screen.size())
            if not pages.lines:
                break
            self.assertTrue(screen.wait_for_prompt(), "the report has ended")
            left = self.check_page(screen, page)
            if number == most - 1:
                screen.press(OTHER_KEYS + last_key)
                break
            screen.resize(*sizes[(number + 1) % len(sizes)])
            screen.press(keys[number % len(keys) :][:1])
        self.assertFalse(screen.wait_for_prompt(), "another prompt")
        self.assertEqual(0, screen.end())
        if pages.lines and last_key == b"q":
            self.check_left(screen, left)
        else:
            pages.pauses = False
            while pages.lines:
                page = pages.next(*screen.size())
            self.check_end(screen, page)
