"""Steps that fail, are late or meet what they cannot read, on an engine that does what it is told."""

import asyncio
import unittest

from ptick_fleet import attempts as attempts_module
from ptick_fleet.attempts import Attempts, Task
from ptick_fleet.problems import LostInputs, ToldTrouble, Trouble

AT_LINE = b"ptick-merge: a: line 3: unknown record type: PROFILE:x\n"
UNREADABLE = b"ptick-merge: a: Input/output error\n"
HANGS = object()


def outcome(kind, place="w1", **fields):
    return {
        "kind": kind, "data": None, "file": None, "size": 0, "left_out": 0, "messages": b"",
        "reason": "", "lost": [], "seconds": 0.0, "place": place, **fields,
    }  # fmt: skip


DONE = outcome("done", "w2")


class Engine:
    """Answers attempts by a list, one after the other."""

    def __init__(self, answers, is_spread=True):
        self.answers = list(answers)
        self.is_spread = is_spread
        self.attempts = []  # (key, places avoided)
        self.ended = []

    async def attempt(self, step, priority, avoided):
        self.attempts.append((step["key"], sorted(avoided)))
        answer = self.answers.pop(0)
        if answer is HANGS:
            try:
                await asyncio.Event().wait()
            finally:
                self.ended.append(step["key"])
        if isinstance(answer, Exception):
            raise answer
        return answer

    async def places_of(self, keys):
        return frozenset({"w" + keys[0].split(".")[1]})


def run(engine, is_of_profiles=True, patience=0.01):
    attempts = Attempts(engine, patience)
    task = Task("r", lambda key: {"key": key}, "the step", is_of_profiles, 0)
    return asyncio.run(attempts.outcome_of(task)), attempts.repeated


class AttemptsTest(unittest.TestCase):
    def setUp(self):
        self.addCleanup(setattr, attempts_module, "BEFORE_AGAIN", attempts_module.BEFORE_AGAIN)
        attempts_module.BEFORE_AGAIN = 0

    def test_a_step_that_fails_is_done_again_elsewhere(self):
        engine = Engine([outcome("failed", "w1"), outcome("failed", "w3"), DONE])
        self.assertEqual((DONE, 2), run(engine))
        self.assertEqual([("r.0.", []), ("r.1.", ["w1"]), ("r.2.", ["w1", "w3"])], engine.attempts)

    def test_it_is_given_up_after_three_failures(self):
        engine = Engine([outcome("failed", reason="no room")] * 3)
        with self.assertRaises(Trouble) as raised:
            run(engine)
        self.assertEqual(
            "the step failed 3 times, the last time at w1: no room", raised.exception.reason
        )

    def test_lost_inputs_are_the_affair_of_the_tree(self):
        with self.assertRaises(LostInputs) as raised:
            run(Engine([outcome("lost", lost=[2])]), is_of_profiles=False)
        self.assertEqual([2], raised.exception.places)

    def test_a_bad_line_is_bad_everywhere(self):
        engine = Engine([outcome("trouble", messages=AT_LINE)])
        with self.assertRaises(ToldTrouble) as raised:
            run(engine)
        self.assertEqual(AT_LINE, raised.exception.told)

    def test_a_file_that_one_worker_cannot_read_another_may(self):
        engine = Engine([outcome("trouble", messages=UNREADABLE), DONE])
        self.assertEqual((DONE, 1), run(engine))

    def test_a_file_that_nobody_can_read_is_told(self):
        engine = Engine([outcome("trouble", messages=UNREADABLE)] * 3)
        with self.assertRaises(ToldTrouble) as raised:
            run(engine)
        self.assertEqual(UNREADABLE, raised.exception.told)

    def test_on_one_machine_it_is_told_at_once(self):
        engine = Engine([outcome("trouble", messages=UNREADABLE)], is_spread=False)
        with self.assertRaises(ToldTrouble):
            run(engine)

    def test_what_is_left_out_unread_is_tried_once_more(self):
        left_out = outcome("done", left_out=2, messages=AT_LINE + UNREADABLE)
        better = outcome("done", left_out=1, messages=AT_LINE)
        worse = outcome("done", left_out=3, messages=AT_LINE + UNREADABLE * 2)
        for answers, want, again in (
            ([left_out, better], better, 1),
            ([left_out, left_out], left_out, 1),
            ([left_out, worse], left_out, 1),
            ([better], better, 0),
        ):
            self.assertEqual((want, again), run(Engine(answers)))

    def test_results_that_cannot_be_merged_are_no_bad_profiles(self):
        engine = Engine([outcome("trouble", reason="status 2: x: line 1: unknown")] * 3)
        with self.assertRaises(Trouble) as raised:
            run(engine, is_of_profiles=False)
        self.assertNotIsInstance(raised.exception, ToldTrouble)

    def test_a_late_step_is_given_to_another_worker_too(self):
        engine = Engine([HANGS, DONE])
        self.assertEqual((DONE, 1), run(engine))
        self.assertEqual([("r.0.", []), ("r.1.", ["w0"])], engine.attempts)
        self.assertEqual(["r.0."], engine.ended)

    def test_at_most_three_do_it(self):
        engine = Engine([HANGS] * 9)

        async def wait():
            attempts = Attempts(engine, 0.001)
            task = Task("r", lambda key: {"key": key}, "the step", True, 0)
            await asyncio.wait_for(attempts.outcome_of(task), 0.2)

        with self.assertRaises(asyncio.TimeoutError):
            asyncio.run(wait())
        self.assertEqual(3, len(engine.attempts))
        self.assertEqual(["r.0.", "r.1.", "r.2."], sorted(engine.ended))

    def test_on_one_machine_a_late_step_is_waited_for(self):
        engine = Engine([HANGS], is_spread=False)
        with self.assertRaises(asyncio.TimeoutError):
            attempts = Attempts(engine, 0.001)
            task = Task("r", lambda key: {"key": key}, "the step", True, 0)
            asyncio.run(asyncio.wait_for(attempts.outcome_of(task), 0.1))
        self.assertEqual(1, len(engine.attempts))


if __name__ == "__main__":
    unittest.main()
