"""ptick-fleet on a real cluster: the bytes of one machine, however the profiles are grouped."""

import os
import random
import unittest

from support.cluster import Cluster
from support.fleet import PATH, FleetTest, last_line


class ClusterMergeTest(FleetTest):
    @classmethod
    def setUpClass(cls):
        cls.cluster = Cluster(workers=2, path=PATH)

    @classmethod
    def tearDownClass(cls):
        cls.cluster.close()

    def on_cluster(self, *arguments, **settings):
        return self.fleet("--scheduler", self.cluster.address, *arguments, **settings)

    def test_random_fleets_give_the_bytes_of_one_machine(self):
        for seed in range(3):
            source = random.Random(seed)
            count = source.choice((1, 7, 60, 130))
            names = self.list_of(self.make_fleet(count, seed))
            want = self.merged(names)
            arguments = [f"--group-files={source.randrange(1, 20)}", f"--fan-in={source.choice((2, 3))}"]
            if source.random() < 0.5:
                arguments += ["--work-dir", "work folder"]
            with self.subTest(seed=seed, count=count, arguments=arguments):
                self.check_merged(self.on_cluster(names, *arguments), want)
                self.check_clean()

    def test_large_results_go_through_the_work_folder(self):
        # Each result has more than the megabyte that goes through the engine.
        for at in range(4):
            rows = "".join(f"PROFILE:trace\tP{at}\t{row}\t1\n" for row in range(70_000))
            self.write(f"big{at}", rows)
        names = [f"big{at}" for at in range(4)]
        want = self.merged(*names)
        arguments = ["--work-dir=work folder", "--group-files=1", "--fan-in=2", "-o", "result"]
        result = self.on_cluster(*names, *arguments)
        self.assertEqual((b"", 0), (result.out, result.status), result.err)
        self.assertEqual(want.out, self.read("result"))
        self.check_clean()

    def test_the_first_bad_profile_is_told_with_its_line(self):
        names = self.make_fleet(40, 5)
        for at in (35, 12, 22):
            self.write(names[at], "PROFILE:ticks\t1\nPROFILE:tciks\t1\n")
        result = self.on_cluster("--group-files=3", "-o", "result", *names)
        want = f"ptick-fleet: {names[12]}: line 2: unknown record type: PROFILE:tciks ...\n"
        self.assertEqual((want, b"", 2), (result.err.decode(), result.out, result.status))
        self.assertFalse(os.path.exists(os.path.join(self.folder, "result")))
        self.check_clean()

    def test_bad_profiles_are_left_out_and_named(self):
        names = self.make_fleet(30, 6)
        for at in (4, 5, 27):
            self.write(names[at], "PROFILE:tciks\t1\n")
        names[13] = "gone"
        want = self.merged("-k", *names)
        self.assertEqual(1, want.status)
        # Group 2 has nothing but bad ones.
        result = self.on_cluster("-k", "-q", "--group-files=2", "--work-dir=work folder", *names)
        told = want.err.replace(b"ptick-merge: ", b"ptick-fleet: ")
        self.assertEqual((told, want.out, 1), (result.err, result.out, result.status))
        self.check_clean()

    def test_what_workers_cannot_run_is_told(self):
        [name] = self.make_fleet(1, 7)
        result = self.on_cluster("--ptick-merge=nowhere/ptick-merge", name)
        self.assertRegex(
            result.err.decode(),
            rf"^ptick-fleet: the merge of {name} failed 3 times, the last time at tcp://\S+: "
            r"nowhere/ptick-merge: not found; it is in the package ptick\n$",
        )
        self.assertEqual(2, result.status)

    def test_the_summary_counts_what_was_done(self):
        names = self.make_fleet(10, 8)
        result = self.on_cluster("--group-files=2", "--fan-in=3", *names)
        first, *stages = result.err.decode().splitlines()
        self.assertRegex(first, r"^ptick-fleet: 10 profiles, .* in \d.*, .*/s, by 2 workers$")
        self.assertEqual(
            ["stage 1: 5 steps", "stage 2: 2 steps", "stage 3: 1 step"],
            [line.removeprefix("ptick-fleet: ").partition(",")[0] for line in stages],
        )

    def test_quiet_says_nothing(self):
        result = self.on_cluster("-q", *self.make_fleet(3, 9))
        self.assertEqual((b"", 0), (result.err, result.status))

    def test_a_work_folder_that_is_not_there_is_told(self):
        result = self.on_cluster("--work-dir=nowhere", *self.make_fleet(1, 10))
        self.assertEqual(
            ("ptick-fleet: nowhere: No such file or directory", 2),
            (last_line(result.err), result.status),
        )


if __name__ == "__main__":
    unittest.main()
