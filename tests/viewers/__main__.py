"""Opens exported profiles in the tools that they are for, and compares what these make of them with what
ptick reports; started by tools/viewers, which installs them."""

import json
import os
import re
import shutil
import signal
import subprocess
import time
import unittest

import jsonschema

HERE = os.path.dirname(os.path.abspath(__file__))
from ptick_export.literal_profile import LiteralProfile
from support.companions import CompanionTest
from support.program import SOURCE_DIR

RUN = os.path.join(SOURCE_DIR, "examples", "orders", "run1")
# From the folder of a test: pictures show these paths.
SOURCES = ["examples/orders/src", "examples/orders/lib"]
# Names that mean something to formats or shells, alike in text or odd.
HOSTILE = (
    b"PROFILE:hertz\t3\n"
    + b"".join(b"PROFILE:trace\t%s\t%d\t%d\n" % (name, line, 10 * line)
               for line, name in enumerate([b"A;B", b"(1) x", b" y ", b"\xe9", b"\xc3\xa9", b"#z", b"\\n",
                                            b"\x1b[1m", b"a,\"b\"", b"<b>&amp;", b"\xe2\x80\xa8", b"-",
                                            b"/x/y", b"%s", b"fn=(3)"], 1))
    + b"PROFILE:perform\tstartclock\t0\tendclock\t10\tcmd\t\"};\\\n"
    + b"PROFILE:perform\tstartclock\t5\tendclock\t15\tcmd\t</script>\n"
    + b"PROFILE:subroutine_call\tA;B (1)\t5\n"
)  # fmt: skip


def read(path):
    with open(path, "rb") as file:
        return file.read()


class ViewersTest(CompanionTest):
    companion = "ptick-export"

    def setUp(self):
        super().setUp()
        self.write("hostile", HOSTILE)
        os.symlink(os.path.join(SOURCE_DIR, "examples"), os.path.join(self.folder, "examples"))
        profile = LiteralProfile(read(RUN))
        self.sums = {(program.decode(), line): ticks
                     for (program, line), ticks in profile.sums(numbered=True).items()}  # fmt: skip
        self.total = sum(self.sums.values())
        self.hottest = sorted(self.sums.items(), key=lambda item: -item[1])[:10]
        self.programs = {}
        for (program, _), ticks in self.sums.items():
            self.programs[program] = self.programs.get(program, 0) + ticks

    def export(self, kind, profile=RUN, *options):
        name = f"{os.path.basename(profile)}.{kind}"
        result = self.run_it("--to", kind, "-o", name, *options, profile)
        self.assertEqual(0, result.status, result)
        return os.path.join(self.folder, name)

    def output(self, *words, environment=None):
        result = subprocess.run(words, cwd=self.folder, capture_output=True, timeout=120, check=False,
                                env={**os.environ, "TZ": "UTC0", **(environment or {})})  # fmt: skip
        self.assertEqual(0, result.returncode, (words, result.stderr[-2000:]))
        return result.stdout.decode(), result.stderr.decode()

    def picture(self, name):
        folder = os.environ.get("VIEWERS_PICTURES")
        return os.path.join(folder or self.folder, name)

    # callgrind_annotate

    def test_callgrind_annotate_sums_programs(self):
        out, err = self.output("callgrind_annotate", "--threshold=100", "--auto=no", self.export("callgrind"))
        self.assertEqual("", err)
        self.assertIn(f"{self.total:,} (100.0%)  PROGRAM TOTALS", out)
        found = re.findall(r"^ *([\d,]+) \( *[\d.]+%\)  ([^:\s]+):\2$", out, re.MULTILINE)
        self.assertEqual(self.programs, {name: int(ticks.replace(",", "")) for ticks, name in found})

    def test_callgrind_annotate_shows_sources(self):
        options = [option for folder in SOURCES for option in ("-f", folder)]
        out, err = self.output("callgrind_annotate", "--threshold=100", self.export("callgrind", RUN, *options))
        self.assertEqual("", err)
        for (program, line), ticks in self.hottest:
            paths = [os.path.join(self.folder, folder, program) for folder in SOURCES]
            [path] = filter(os.path.exists, paths)
            text = read(path).decode().split("\n")[line - 1]
            self.assertRegex(out, rf"(?m)^ *{ticks:,} \( *[\d.]+%\)  {re.escape(text)}$")

    def test_callgrind_annotate_takes_hostile_names(self):
        out, err = self.output("callgrind_annotate", "--threshold=100", "--auto=no",
                               self.export("callgrind", "hostile"))  # fmt: skip
        self.assertEqual("", err)
        self.assertIn("1,200 (100.0%)  PROGRAM TOTALS", out)
        self.assertEqual(15, len(re.findall(r"^ *[\d,]+ \( *[\d.]+%\)  .*:", out, re.MULTILINE)))

    # KCachegrind

    def test_kcachegrind_loads(self):
        options = [option for folder in SOURCES for option in ("-f", folder)]
        name = os.path.basename(self.export("callgrind", RUN, *options))
        self.write("home/.config/kcachegrindrc", "[TipOfDay]\nRunOnStart=false\n")
        os.makedirs(os.path.join(self.folder, "runtime"), mode=0o700)
        screen = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1000x560x24", "-nolisten", "tcp"],
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)  # fmt: skip
        self.addCleanup(screen.wait)
        self.addCleanup(screen.stdout.close)
        self.addCleanup(screen.kill)
        environment = {
            "DISPLAY": ":" + screen.stdout.readline().decode().strip(),
            "HOME": os.path.join(self.folder, "home"),
            "XDG_RUNTIME_DIR": os.path.join(self.folder, "runtime"),
            "QT_QPA_PLATFORM": "xcb",
            "LC_ALL": "C.UTF-8",
        }
        viewer = subprocess.Popen(["dbus-run-session", "--", "kcachegrind", name], cwd=self.folder,
                                  env={**os.environ, **environment}, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.PIPE, start_new_session=True)  # fmt: skip
        try:
            title = f"{name} [ORDER.DESK NORTH 4 -JP] — KCachegrind"
            window = self.window(title, environment)
            self.output("xdotool", "windowsize", window, "1000", "560", "windowmove", window, "0", "0",
                        environment=environment)  # fmt: skip
            time.sleep(1)
            # The third program, and its source.
            for x, y in ((190, 176), (717, 99)):
                self.output("xdotool", "mousemove", str(x), str(y), "click", "1", environment=environment)
                time.sleep(1)
            # Down to the hottest line, past the path of the source.
            self.output("xdotool", "mousemove", "600", "250", "click", "--repeat", "14", "5",
                        environment=environment)  # fmt: skip
            time.sleep(1)
            picture = self.picture("kcachegrind.png")
            self.output("import", "-window", "root", "-colors", "64", f"png8:{picture}", environment=environment)
            self.assertGreater(os.path.getsize(picture), 10_000)
        finally:
            os.killpg(viewer.pid, signal.SIGTERM)
            _, err = viewer.communicate(timeout=20)
        self.assertNotIn(b"Error", err.replace(b"org.freedesktop.DBus.Error", b""))

    def window(self, title, environment):
        """The number of the window with that title, when it is there."""
        shown = set()
        for _ in range(60):
            found = subprocess.run(["xdotool", "search", "--name", "."],
                                   env={**os.environ, **environment}, capture_output=True, check=False)  # fmt: skip
            for number in found.stdout.decode().split():
                name = subprocess.run(["xdotool", "getwindowname", number], env={**os.environ, **environment},
                                      capture_output=True, check=False).stdout.decode().strip()  # fmt: skip
                shown.add(name)
                if name == title:
                    return number
            time.sleep(0.5)
        raise AssertionError(f"no window {title!r}, but {shown!r}")

    # pprof

    def test_pprof_top(self):
        file = self.export("pprof")
        out, _ = self.output("go", "tool", "pprof", "-top", "-nodefraction=0", file)
        self.assertIn(f"Total samples = {self.total} ", out)
        self.assertIn("Time: Mar 9, 2026 at 8:02am (UTC)", out)
        self.assertIn("ORDER.DESK NORTH 4 -JP", out)
        found = re.findall(r"^ *(\d+) +[\d.]+% +[\d.]+% +\1 +[\d.]+%  (\S+)$", out, re.MULTILINE)
        self.assertEqual(self.programs, {name: int(ticks) for ticks, name in found})

    def test_pprof_lines(self):
        out, _ = self.output("go", "tool", "pprof", "-top", "-lines", "-nodefraction=0", self.export("pprof"))
        found = re.findall(r"^ *(\d+) .*%  (\S+) \2:(\d+)$", out, re.MULTILINE)
        self.assertEqual(self.sums, {(name, int(line)): int(ticks) for ticks, name, line in found})

    def test_pprof_lists_sources(self):
        options = [option for folder in SOURCES for option in ("-f", folder)]
        (program, line), ticks = self.hottest[0]
        out, _ = self.output("go", "tool", "pprof", "-list", f"^{re.escape(program)}$",
                             self.export("pprof", RUN, *options))  # fmt: skip
        self.assertRegex(out, rf"(?m)^ *{ticks} +{ticks} +{line}:")

    def test_pprof_raw_takes_hostile_names(self):
        out, _ = self.output("go", "tool", "pprof", "-raw", self.export("pprof", "hostile"))
        samples = re.findall(r"^ +(\d+): \d+ $", out.partition("Locations")[0], re.MULTILINE)
        self.assertEqual(list(range(150, 0, -10)), sorted(map(int, samples), reverse=True))
        self.assertEqual(15, len(re.findall(r"^ +\d+: 0x0 M=1 ", out, re.MULTILINE)))

    # speedscope

    def speedscope(self, file, picture=None):
        """What speedscope's importer makes of a file: its frames and profiles."""
        words = ["node", os.path.join(HERE, "speedscope.mjs"), file]
        out, _ = self.output(*words, *([self.picture(picture)] if picture else []))
        saved = json.loads(out)
        return saved["shared"]["frames"], saved["profiles"]

    def weights(self, frames, profile):
        """{(program, line): ticks} of a profile with events, which is what it saves."""
        found, stack, before = {}, [], 0
        for event in profile["events"]:
            if len(stack) == 2:
                key = frames[stack[0]]["name"], int(frames[stack[1]]["name"])
                found[key] = found.get(key, 0) + event["at"] - before
            if event["type"] == "O":
                stack.append(event["frame"])
            else:
                stack.pop()
            before = event["at"]
        return {key: ticks for key, ticks in found.items() if ticks}

    def test_speedscope_imports_its_own_format(self):
        with open(os.path.join(os.environ["VIEWERS_MODULES"], "speedscope", "dist", "release",
                               "file-format-schema.json"), encoding="utf-8") as file:  # fmt: skip
            schema = json.load(file)
        for profile in (RUN, "hostile"):
            file = self.export("speedscope", profile)
            jsonschema.validate(json.loads(read(file)), schema)
        frames, profiles = self.speedscope(self.export("speedscope"), "speedscope.png")
        self.assertEqual(["Ticks", "Commands"], [profile["name"] for profile in profiles])
        self.assertEqual(self.sums, self.weights(frames, profiles[0]))
        commands = len(LiteralProfile(read(RUN)).commands)
        self.assertEqual(2 * commands, len(profiles[1]["events"]))
        frames, profiles = self.speedscope(self.export("speedscope", "hostile"))
        self.assertEqual([1200, 3.333333333, 5], [profile["endValue"] for profile in profiles])
        self.assertLessEqual({"A;B", "é", "é (Latin-1)", "</script>"}, {frame["name"] for frame in frames})

    def test_speedscope_imports_folded_stacks(self):
        frames, [profile] = self.speedscope(self.export("folded"))
        self.assertEqual(self.sums, self.weights(frames, profile))

    def test_speedscope_imports_pprof(self):
        frames, [profile] = self.speedscope(self.export("pprof"))
        self.assertEqual(self.total, profile["endValue"])
        self.assertEqual(set(self.programs), {frame["name"] for frame in frames})

    def test_speedscope_imports_trace_events(self):
        literal = LiteralProfile(read(RUN))
        frames, profiles = self.speedscope(self.export("trace"), "trace.png")
        names = [profile["name"] for profile in profiles]
        self.assertEqual(["ORDER.DESK (pid 1), Commands (tid 1)", "ORDER.DESK (pid 1), Inputs (tid 2)"], names)
        counts = [len(profile["events"]) // 2 for profile in profiles]
        self.assertEqual([len(literal.commands), len(literal.inputs)], counts)

    # SQL engines

    def test_duckdb_reads_csv(self):
        file = self.export("csv")
        sql = "SELECT program, line, ticks FROM '{}' ORDER BY ticks DESC LIMIT 10".format(file)
        out, _ = self.output("node", os.path.join(HERE, "duckdb.mjs"), sql)
        rows = json.loads(out)
        self.assertEqual([ticks for _, ticks in self.hottest], [int(ticks) for *_, ticks in rows])
        out, _ = self.output("node", os.path.join(HERE, "duckdb.mjs"), f"SELECT sum(ticks)::BIGINT FROM '{file}'")
        self.assertEqual([[str(self.total)]], json.loads(out))
        file = self.export("csv", "hostile")
        out, _ = self.output("node", os.path.join(HERE, "duckdb.mjs"),
                             f"SELECT count(DISTINCT program)::INT, sum(ticks)::INT FROM '{file}'")  # fmt: skip
        self.assertEqual([[15, 1200]], json.loads(out))


if __name__ == "__main__":
    missing = [name for name in ("callgrind_annotate", "kcachegrind", "go", "node") if not shutil.which(name)]
    assert not missing, missing
    unittest.main()
