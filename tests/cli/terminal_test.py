"""Output on a real terminal: pages, key waits, control bytes, interrupts."""

import os
import signal
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
from support.program import PTICK, ProgramTest  # noqa: E402
from support.terminal import Terminal  # noqa: E402

COLUMNS = b"Source name          Line#  Ticks    %      \n"


def title(page, width=80):
    text = b"Profile of program (unknown) from profile run"
    return text + b" " * (width - 1 - len(text) - 15) + b" Page %d\n" % page


class TerminalTest(ProgramTest):
    def start(self, rows, columns, *arguments, lines=7, **settings):
        records = [f"PROFILE:trace\tA\t{line}\t1\n" for line in range(lines, 0, -1)]
        self.write("run", "PROFILE:ticks\t1\n" + "".join(records))
        return Terminal(
            [os.path.abspath(PTICK), *(arguments or ["run"])], self.folder, rows, columns, **settings
        )

    def pages(self, rows, lines=7, width=80):
        text, page, body = b"", 0, max(rows - 2, 1)
        for line in range(1, lines + 1):
            if (line - 1) % body == 0:
                page += 1
                text += title(page, width) + COLUMNS
            text += self.row(line, first=line == 1)
        return text

    @staticmethod
    def row(line, first):
        return b"%-20s %-6d %-8d %-6s\n" % (b"A" if first else b"", line, 1, b"100")

    def press_through(self, terminal, key, waits):
        for wait in range(waits):
            terminal.wait_for(b" Page %d\n" % (wait + 1))
            terminal.wait_for_key_wait()
            terminal.press(key)

    def test_every_page_starts_with_the_heading_and_waits_for_a_key(self):
        for key in (b"\r", b" ", b"\n"):
            terminal = self.start(5, 80)
            terminal.wait_for(COLUMNS)
            self.press_through(terminal, key, 2)
            terminal.wait_for(b" Page 3\n")
            with self.subTest(key=key):
                self.assertEqual(terminal.before, terminal.attributes())
                self.assertEqual(0, terminal.end())
                self.assertEqual(self.pages(5), terminal.output)

    def test_odd_sizes_print_the_same_rows(self):
        for rows, columns in ((1, 80), (2, 80), (3, 80), (4, 30), (9, 80), (10, 200), (0, 0)):
            terminal = self.start(rows, columns, lines=7)
            terminal.wait_for(COLUMNS)
            length = rows or 24
            waits = (7 - 1) // max(length - 2, 1)
            self.press_through(terminal, b" ", waits)
            with self.subTest(rows=rows, columns=columns):
                self.assertEqual(0, terminal.end())
                self.assertEqual(self.pages(length, 7, columns or 80), terminal.output)

    def test_a_full_page_stands_in_view_while_it_waits(self):
        terminal = self.start(5, 80)
        terminal.wait_for_key_wait()
        self.assertEqual(self.pages(5, 3)[:-1], terminal.output or self.read_now(terminal))
        terminal.press(b"q")
        self.assertEqual(0, terminal.end())

    @staticmethod
    def read_now(terminal):
        terminal.wait_for(b"100   ", 3)
        return terminal.output

    def test_q_ends_and_c_goes_on_without_waiting(self):
        terminal = self.start(5, 80)
        terminal.wait_for_key_wait()
        terminal.press(b"q")
        self.assertEqual(0, terminal.end())
        self.assertEqual(self.pages(5, 3), terminal.output)

        terminal = self.start(5, 80)
        terminal.wait_for_key_wait()
        terminal.press(b"xc")
        self.assertEqual(0, terminal.end())
        self.assertEqual(self.pages(5), terminal.output)

    def test_without_a_keyboard_pages_do_not_wait(self):
        terminal = self.start(5, 80, keyboard=False)
        self.assertEqual(0, terminal.end())
        self.assertEqual(self.pages(5), terminal.output)

    def test_a_signal_in_the_middle_leaves_the_terminal_as_it_was(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            terminal = self.start(5, 80)
            terminal.wait_for_key_wait()
            terminal.interrupt(number)
            with self.subTest(signal=number):
                self.assertEqual(f"ended {-number}", terminal.event())
                self.assertEqual(terminal.before, terminal.attributes())

    def test_the_interrupt_key_ends_a_waiting_run(self):
        terminal = self.start(5, 80)
        terminal.wait_for_key_wait()
        terminal.press(b"\x03")
        self.assertEqual(f"ended {-signal.SIGINT}", terminal.event())
        self.assertEqual(terminal.before, terminal.attributes())

    def test_a_stopped_run_restores_the_terminal_and_goes_on(self):
        terminal = self.start(5, 80)
        terminal.wait_for_key_wait()
        terminal.interrupt(signal.SIGTSTP)
        self.assertEqual("stopped", terminal.event())
        self.assertEqual(terminal.before, terminal.attributes())
        terminal.interrupt(signal.SIGCONT)
        terminal.wait_for_key_wait()
        terminal.press(b"q")
        self.assertEqual(0, terminal.end())

    def test_reports_without_a_heading_are_not_paged(self):
        terminal = self.start(3, 80, "-a", "run")
        self.assertEqual(0, terminal.end())
        self.assertIn(b"INPUT count", terminal.output)
        self.assertNotIn(b" Page ", terminal.output)

    def test_control_bytes_show_as_question_marks_on_a_terminal_only(self):
        self.write("odd", b"PROFILE:trace\tA\x1b[2J\x7f\x07\t1\t1\nPROFILE:trace\tB\xc3\xa9\t2\t0\n")
        terminal = self.start(24, 80, "odd")
        self.assertEqual(0, terminal.end())
        self.assertIn(b"\nA?[2J??  ", terminal.output)
        self.assertIn(b"\nB\xc3\xa9  ", terminal.output)
        self.assertIn(b"\nA\x1b[2J\x7f\x07  ", self.run_ptick("odd").out)

    def test_diagnostics_cannot_drive_the_terminal_either(self):
        self.write("bad", b"PROFILE:\x1b[2J\t1\n")
        terminal = self.start(24, 80, "bad")
        self.assertEqual(2, terminal.end())
        self.assertIn(b"at line 1\n\t?[2J\t1\n", terminal.output)


if __name__ == "__main__":
    unittest.main()
