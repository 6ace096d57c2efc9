"""What docs/scale.md shows of clusters and other engines is run as it is shown."""

import os
import re
import socket
import subprocess
import unittest
import urllib.request

from support.cluster import wait_until
from support.documents import blocks, read
from support.fleet import BUILD_DIR, PATH, PROGRAMS, FleetTest
from support.program import clean_environment

ADDRESS, PORT, DASHBOARD = "192.0.2.7", "8786", "8787"
DAY = "2026-03-09"


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return str(listener.getsockname()[1])


class DocumentsTest(FleetTest):
    def setUp(self):
        super().setUp()
        names = self.make_fleet(40, 1)
        os.rename(os.path.join(self.folder, "day 1"), os.path.join(self.folder, DAY))
        self.names = sorted(
            name.replace("day 1", DAY) for name in names if name.startswith("day 1/")
        )
        self.assertGreater(len(self.names), 5)
        self.want = self.merged(*self.names).out
        self.assertGreater(len(self.want), 100)
        port, self.dashboard = free_port(), free_port()
        self.instead = {
            ADDRESS: "127.0.0.1", PORT: port, DASHBOARD: self.dashboard, "/srv/work": self.work,
            "/var/tmp/dask": os.path.join(self.folder, "dask"), "-n 1000": "-n 3",
        }  # fmt: skip
        self.instead["/srv/work"] = self.work.replace(" ", "\\ ")

    def command(self, beginning):
        """The one that begins like this, with what is free and short here."""
        [command] = [text for text in blocks(read("docs", "scale.md"), "sh") if beginning in text]
        for shown, there in self.instead.items():
            command = command.replace(shown, there)
        return command

    def environment(self):
        path = os.path.abspath(BUILD_DIR) + os.pathsep + PATH
        return clean_environment(PATH=path, HOME=self.folder)

    def start(self, command, log):
        with open(os.path.join(self.folder, log), "wb") as file:
            process = subprocess.Popen(
                ["sh", "-c", "exec " + command], cwd=self.folder, env=self.environment(),
                stdin=subprocess.DEVNULL, stdout=file, stderr=file, start_new_session=True,
            )  # fmt: skip
        self.addCleanup(process.wait)
        self.addCleanup(process.terminate)

    def run_shown(self, command):
        process = subprocess.run(
            ["bash", "-o", "pipefail", "-c", command], cwd=self.folder, env=self.environment(),
            capture_output=True, timeout=120, check=False,
        )  # fmt: skip
        self.assertEqual(0, process.returncode, process.stderr)
        self.assertTrue(self.want == self.read(DAY + ".merged"))

    def test_a_cluster_is_set_up_as_shown(self):
        self.start(self.command("dask-scheduler --host"), "scheduler.log")
        wait_until(lambda: b"Scheduler at:" in self.read("scheduler.log"), "the scheduler")
        self.start(self.command("dask-worker tcp:"), "worker.log")
        self.run_shown(self.command("ptick-fleet merge --scheduler"))
        self.assertEqual([], os.listdir(self.work))
        page = f"http://127.0.0.1:{self.dashboard}/info/main/workers.html"
        with urllib.request.urlopen(page, timeout=60) as answer:
            self.assertIn(b"Workers", answer.read())

    def test_a_pipe_merges_groups_in_order(self):
        self.write("names", "".join(name + "\0" for name in self.names))
        self.run_shown(self.command("xargs -0 -n 1000 ptick-merge"))

    def test_programs_are_those_that_were_built(self):
        for program in ("ptick-merge", "ptick-fleet"):
            self.assertTrue(os.access(os.path.join(PROGRAMS, program), os.X_OK))

    def test_constants_are_those_of_the_model(self):
        model = read("bench", "fleet_model")
        text = read("docs", "scale.md")
        for name, shown in (
            ("look", r"client \| ([\d.]+) us"), ("client_step", r"step at the client \| ([\d.]+) ms"),
            ("client_megabyte", r"engine, at the client \| ([\d.]+) ms"),
            ("worker_step", r"start of `ptick-merge` \| ([\d.]+) ms"),
            ("profile", r"us \(([\d.]+) us, and"), ("merge_megabyte", r"us, and ([\d.]+) ms a megabyte"),
            ("pass_megabyte", r"3.2 ms \(([\d.]+) ms"),
            ("merge_result_megabyte", r"ms and ([\d.]+) ms a megabyte"),
        ):  # fmt: skip
            [used] = re.findall(rf"^    {name}: float = ([\d.]+)e-[36]", model, re.MULTILINE)
            self.assertEqual([float(used)], [float(each) for each in re.findall(shown, text)], name)


if __name__ == "__main__":
    unittest.main()
