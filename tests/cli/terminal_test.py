"""The ends and interruptions of a run on a terminal, and terminals that are not like others."""

import os
import resource
import signal
import unittest

from support.program import PTICK
from support.screen_case import ScreenTest
from support.terminal import Terminal

COLUMNS = b"Source name          Line#  Ticks    %      \n"


class TerminalTest(ScreenTest):
    def setUp(self):
        super().setUp()
        rows = "".join(f"PROFILE:trace\tA\t{line}\t1\n" for line in range(7, 0, -1))
        self.write("run", "PROFILE:ticks\t1\n" + rows)

    def start_at_prompt(self):
        """A run that waits at its first prompt, and what is in view without it."""
        screen = self.start(["run"], 6, 80)
        self.assertTrue(screen.wait_for_prompt())
        return screen, self.check_page(screen, self.pages(["run"], 80).next(6, 80))

    def test_a_signal_at_a_prompt_leaves_nothing_of_it(self):
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        for number in (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM, signal.SIGXCPU):
            screen, left = self.start_at_prompt()
            screen.interrupt(number)
            with self.subTest(signal=number):
                self.assertEqual(-number, screen.end())
                self.check_left(screen, left)
                self.assertEqual(screen.before, screen.after)

    def test_a_key_that_interrupts_leaves_nothing_of_the_prompt(self):
        for key, number in ((b"\x03", signal.SIGINT), (b"\x1c", signal.SIGQUIT)):
            screen, left = self.start_at_prompt()
            screen.press(key)
            with self.subTest(key=key):
                self.assertEqual(-number, screen.end())
                self.check_left(screen, left)
                self.assertEqual(screen.before, screen.after)

    def test_a_stopped_run_leaves_nothing_of_the_prompt_and_goes_on(self):
        screen, left = self.start_at_prompt()
        for _ in range(2):
            screen.press(b"\x1a")
            self.assertEqual("stopped", screen.event())
            screen.read_waiting()
            self.check_left(screen, left)
            self.assertEqual(screen.before, screen.attributes())
            screen.interrupt(signal.SIGCONT)
            self.assertTrue(screen.wait_for_prompt_again())
            self.assertEqual(left[:-1], screen.rows()[:-1])
        screen.press(b" ")
        self.assertTrue(screen.wait_for_prompt())
        pages = self.pages(["run"], 80)
        pages.next(6, 80)
        self.check_page(screen, pages.next(6, 80))
        screen.press(b"q")
        self.assertEqual(0, screen.end())

    def test_without_a_keyboard_pages_do_not_wait(self):
        pages = self.pages(["run"], 80)
        pages.pauses = False
        screen = self.start(["run"], 5, 80, keyboard=False)
        self.assertEqual(0, screen.end())
        while pages.lines:
            page = pages.next(5, 80)
        self.check_end(screen, page)
        self.assertEqual(3, screen.output.count(b" Page "))
        self.assertNotIn(b"\x1b", screen.output)

    def test_a_terminal_that_does_not_tell_its_size_has_the_usual_one(self):
        rows = "".join(f"PROFILE:trace\tA\t{line}\t1\n" for line in range(25))
        self.write("run", "PROFILE:ticks\t1\n" + rows)
        terminal = Terminal([os.path.abspath(PTICK), "run"], self.folder, 0, 0)
        terminal.wait_for_key_wait()
        terminal.press(b"c")
        self.assertEqual(0, terminal.end())
        first, second = terminal.output.split(b"\r\x1b[K-- more: Return page, c continue, q quit --\r\x1b[K")
        self.assertEqual((23, 6), (first.count(b"\n"), second.count(b"\n")))
        self.assertEqual(79 - 8, len(second.split(b"\n")[0]))

    def test_bytes_are_as_they_are_but_for_what_drives_the_terminal(self):
        self.write("odd", b"PROFILE:trace\tA\x1b[2J\x7f\x07\t1\t1\nPROFILE:trace\tB\xc3\xa9\t2\t0\n")
        terminal = Terminal([os.path.abspath(PTICK), "odd"], self.folder, 24, 80)
        self.assertEqual(0, terminal.end())
        title = b"Profile of program (unknown) from profile odd" + b" " * 19 + b" Page 1\n"
        rows = b"A?[2J??              1      1        0     \nB\xc3\xa9                  2      0        0     \n"
        self.assertEqual(title + COLUMNS + rows, terminal.output)


if __name__ == "__main__":
    unittest.main()
