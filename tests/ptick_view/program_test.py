"""ptick-view as its users run it: the page, what it holds, options, messages, exit status."""

import json
import os
import pty
import re
import subprocess
import unittest

from support.companions import CompanionTest, path_of
from support.program import SOURCE_DIR, clean_environment

RUN1 = "PROFILE:ticks\t3\nPROFILE:trace\tA\t1\t2\nPROFILE:trace\tB\t1\t1\n"
RUN2 = "PROFILE:ticks\t3\nPROFILE:trace\tA\t1\t3"
BAD = "PROFILE:trace\tA\t1\t2\nPROFILE:trcae\tA\t1\t2\n"
TRY = "Try 'ptick-view --help' for more information.\n"
ORDERS = os.path.join(SOURCE_DIR, "examples", "orders")
# How ptick-diff calls what the page has changes of.
KINDS = {"lines": "line", "programs": "program", "commands": "command",
         "subroutines": "subroutine", "counters": "counter"}  # fmt: skip


def divided(page):
    """What a page is around its data, and the data."""
    found = re.search(rb'<script type="application/json" id="data">(.*?)</script>', page, re.DOTALL)
    return page[: found.start(1)] + page[found.end(1) :], found[1]


class ViewTest(CompanionTest):
    companion = "ptick-view"

    def setUp(self):
        super().setUp()
        self.write("run1", RUN1)
        self.write("run2", RUN2)
        self.write("bad", BAD)
        self.write("empty", "")

    def document(self, *arguments):
        result = self.run_it(*arguments)
        self.assertEqual((b"", 0), (result.err, result.status))
        return json.loads(divided(result.out)[1])

    def test_a_page_is_the_built_page_with_data_in_it(self):
        result = self.run_it("run1")
        page, data = divided(result.out)
        with open(os.path.join(SOURCE_DIR, "web", "dist", "ptick-view.html"), "rb") as file:
            self.assertEqual(file.read().replace(b"@PTICK_VIEW_DATA@", b""), page)
        self.assertNotIn(b"<", data)
        self.assertEqual("run1", json.loads(data)["profile"]["profile"])
        self.assertEqual(result.out, self.run_it("run1").out)
        self.check(self.run_it("-o", "page.html", "run1"))
        self.assertEqual(result.out, self.read("page.html"))

    def test_the_run_is_that_of_ptick_export(self):
        for profiles in (["run1"], ["run2"]):
            paths = [os.path.join(ORDERS, name) for name in profiles]
            document = self.document(*paths)
            exported = json.loads(
                self.run_program(path_of("ptick-export"), "--to=json", *paths).out
            )
            profile = document["profile"]
            lines = {}
            for row in exported["lines"]:
                key = (row["program"], row["line"])
                lines[key] = lines.get(key, 0) + row["ticks"]
            names = document["names"]
            columns = profile["lines"]
            rows = list(zip(columns["program"], columns["line"], columns["ticks"]))
            self.assertEqual(lines, {(names[number], line): ticks for number, line, ticks in rows})
            self.assertEqual(sorted((row[2] for row in rows), reverse=True), [row[2] for row in rows])
            for number, ticks, count in zip(*profile["programs"].values()):
                of_program = [n for (name, _), n in lines.items() if name == names[number]]
                self.assertEqual((sum(of_program), len(of_program)), (ticks, count))
            for name in set(exported) - {"lines"}:
                self.assertEqual(exported[name], profile[name], name)

    def test_changes_are_those_of_ptick_diff(self):
        old, new = (os.path.join(ORDERS, name) for name in ("run1", "run2"))
        document = self.document("--baseline", old, new)
        for key, kind in KINDS.items():
            result = self.run_program(path_of("ptick-diff"), "--json", "--by", kind, old, new)
            want = json.loads(result.out)["rows"]
            changes = document["baseline"]["changes"][key]
            if isinstance(changes, dict):
                changes = [dict(zip(changes, row)) for row in zip(*changes.values())]
            self.assertEqual(len(want), len(changes), kind)
            for row, change in zip(want, changes):
                if "program" in change:
                    change["program"] = document["names"][change["program"]]
                for name, value in change.items():
                    if name in ("p", "q") and value is not None:
                        self.assertEqual(float(f"{row[name]:.4g}"), value)
                    else:
                        self.assertEqual(row[name], value, (kind, name))

    def test_several_profiles_are_runs(self):
        document = self.document("--baseline", "run1", "--baseline", "run1", "run1", "run2")
        self.assertEqual((2, 2), (document["runs"], document["baseline"]["runs"]))
        self.assertEqual("run1 ...", document["profile"]["profile"])
        self.assertEqual([5, 1], document["profile"]["lines"]["ticks"])
        self.assertEqual([2.5, 0.5], document["baseline"]["changes"]["lines"]["new"])

    def test_sources_are_those_of_programs_with_ticks(self):
        self.write("src/A", "first \xc3\xa9\n</script>\n")
        self.write("src/SECRET", "no ticks\n")
        self.write("src/../B", "outside\n")
        document = self.document("-f", "src", "run1")
        self.assertEqual(
            [{"program": 0, "file": "src/A", "lines": ["first \xc3\xa9", "</script>"]}],
            document["sources"],
        )
        self.assertTrue(document["sources_wanted"])

    def test_pipes_are_read_once(self):
        self.assertEqual(self.run_it("run1").out.replace(b'"run1"', b'"standard input"'),
                         self.run_piped(RUN1, "-").out)  # fmt: skip

    def test_bad_inputs_leave_no_page(self):
        for arguments, message in (
            (["bad"], "bad: line 2: unknown record type: PROFILE:trcae ..."),
            (["run1", "none"], "none: No such file or directory"),
            (["--baseline=bad", "run1"], "bad: line 2: unknown record type: PROFILE:trcae ..."),
        ):
            result = self.run_it("-o", "page.html", *arguments)
            self.check(result, err=f"ptick-view: {message}\n", status=2)
            self.assertFalse(os.path.exists(os.path.join(self.folder, "page.html")))

    def test_wrong_use(self):
        for arguments, message in (
            ([], "missing operand"),
            (["-f", "none", "run1"], "cannot open the source folder 'none': No such file or directory"),
            (["--open", "run1"], "'--open' needs '-o', a file that the browser can open"),
            (["--open", "-o-", "run1"], "'--open' needs '-o', a file that the browser can open"),
            (["--baseline=-", "-"], "standard input, '-', can be read only once"),
        ):
            result = self.run_it(*arguments)
            self.assertEqual((b"", 2), (result.out, result.status), arguments)
            self.assertTrue(result.err.decode().endswith(TRY), result.err)
            self.assertIn(message, result.err.decode())

    def test_a_page_never_goes_to_a_terminal(self):
        reader, terminal = pty.openpty()
        self.addCleanup(os.close, reader)
        self.addCleanup(os.close, terminal)
        process = subprocess.Popen(
            [path_of("ptick-view"), "run1"], cwd=self.folder, env=clean_environment(),
            stdout=terminal, stderr=subprocess.PIPE)  # fmt: skip
        _, message = process.communicate()
        self.assertEqual(2, process.returncode)
        self.assertIn(b"terminal", message)

    def test_the_page_is_opened_when_it_is_there(self):
        self.write("bin/xdg-open", '#!/bin/sh\ncp -- "$1" opened.html\nmkfifo done; echo > done\n')
        os.chmod(os.path.join(self.folder, "bin/xdg-open"), 0o755)
        path = os.path.join(self.folder, "bin") + ":" + os.environ["PATH"]
        result = self.run_it("--open", "-o", "page.html", "run1", PATH=path)
        self.check(result)
        for _ in range(200):
            if os.path.exists(os.path.join(self.folder, "done")):
                break
            subprocess.run(["sleep", "0.05"], check=True)
        self.assertEqual(b"\n", self.read("done"))
        self.assertEqual(self.read("page.html"), self.read("opened.html"))

    def test_the_page_stays_where_it_cannot_be_opened(self):
        result = self.run_it("--open", "-o", "page.html", "run1", PATH="/nonexistent")
        self.check(result, err="ptick-view: cannot run xdg-open: No such file or directory\n", status=1)
        self.assertEqual(self.run_it("run1").out, self.read("page.html"))

    def test_an_empty_profile_has_a_page(self):
        self.assertEqual([], self.document("empty")["names"])


if __name__ == "__main__":
    unittest.main()
