"""No call that fails can break a run of a companion: it does what it would have done, or it ends with status
2, says why, and leaves no result. PTICK_FAULTS=all tries every place of every form; otherwise a few forms
represent all."""

import collections
import errno
import os
import re
import subprocess
import tempfile
import unittest

from faults.disturbed import Stage, adopt_orphans
from support.program import ProgramTest

DYNAMIC_DIR = os.environ.get("PTICK_DYNAMIC_DIR", "build/dev")
SHORT = 0
RESULT = "result"

RUN1 = """PROFILE:program\tDESK NORTH
PROFILE:hertz\t100
PROFILE:starttime\t1773043331
PROFILE:startclock\t1
PROFILE:perform\tstartclock\t1\tendclock\t2\tcmd\tLIST A COMMAND THAT IS LONG ENOUGH TO NEED MEMORY
PROFILE:perform\tstartclock\t1\tendclock\t3\tcmd\tANOTHER
PROFILE:input\t13\t5\t1\t2\tA TEXT THAT IS LONG ENOUGH TO NEED MEMORY
PROFILE:subroutine_call\tDESK A.PROGRAM.WITH.A.NAME.THAT.IS.LONG\t17
PROFILE:shared_object\tA.SHARED.OBJECT.WITH.A.NAME.THAT.IS.LONG.so\t1
PROFILE:trace\tDESK\t1\t30
PROFILE:trace\tDESK\t2\t1.5
PROFILE:trace\tDESK\tx\t12
PROFILE:trace\tA.PROGRAM.WITH.A.NAME.THAT.IS.LONG\t1\t40
PROFILE:trace\tNOWHERE\t3\t900
PROFILE:ticks\t983
"""
FILES = {
    "run1": RUN1,
    "run2": RUN1.replace("\t900", "\t950").replace("\t983", "\t1033"),
    "bad": RUN1 + "PROFILE:trcae\tA\n",
    "names": "run1\n\nrun2\n",
    "zeros": "run1\0run2\0",
    "src/DESK": "PROGRAM DESK\n\tPRINT 'desk'\n\n\n\n\n\n\nEND\n",
    "lib/A.PROGRAM.WITH.A.NAME.THAT.IS.LONG": "*\nSTOP\n",
    "new/DESK": "PROGRAM DESK\n*\n\tPRINT 'desk'\n\n\n\n\n\n\nEND\n",
}

# A form of a run; where calls of some kinds fail that are not missed, `spared` inputs may be left out.
Form = collections.namedtuple("Form", "program arguments may_leave_out", defaults=[False])
FORMS = {
    "merge": Form("ptick-merge", ["run1", "run2"]),
    "merge to a file": Form("ptick-merge", ["-o", RESULT, "--program=X", "run1", "run2"]),
    "merge of a list": Form("ptick-merge", ["--files-from=names"]),
    "merge of a zero list": Form("ptick-merge", ["--files0-from=zeros", "--output", RESULT]),
    "merge without the bad": Form("ptick-merge", ["-k", "run1", "bad", "run2"], True),
    "annotation": Form("ptick-annotate", ["-f", "src", "-f", "lib", "run1"], True),
    "annotation to a file": Form("ptick-annotate", ["-fsrc", "-a", "-o", RESULT, "run1", "run2"], True),
    "difference": Form("ptick-diff", ["run1", "run2"]),
    "difference to a file": Form("ptick-diff", ["--json", "-o", RESULT, "run1", "run1", "--vs", "run2"]),
    "difference in a table": Form("ptick-diff", ["--csv", "--normalize", "-o", RESULT, "run1", "run2"]),
    "difference of runs": Form("ptick-diff", ["run1"] * 3 + ["--vs"] + ["run2"] * 3),
    "difference over the bar": Form("ptick-diff", ["--fail-slower=0", "--fail-slower-row=0", "run1", "run2"]),
    "difference of sources": Form(
        "ptick-diff", ["--all", "--old-source=src", "--new-source=new", "run1", "run2"], True),
    **{f"difference by {kind}": Form("ptick-diff", [f"--by={kind}", "run1", "run2"])
       for kind in ("program", "command", "subroutine", "counter")},
    "export": Form("ptick-export", ["--to=json", "run1", "run2"]),
    "export to a file": Form("ptick-export", ["--to=pprof", "-o", RESULT, "run1"]),
    **{f"export to {kind}": Form("ptick-export", [f"--to={kind}", "-fsrc", "-o", RESULT, "run1"], True)
       for kind in ("callgrind", "speedscope", "trace", "folded")},
    **{f"export of {table}": Form("ptick-export", ["--to=csv", f"--table={table}", "run1"])
       for table in ("lines", "programs", "commands", "subroutines", "objects", "inputs", "counters")},
}  # fmt: skip
FILE_FORMS = ("merge to a file", "annotation to a file", "difference to a file", "export to a file")
PIPE_FORMS = ("merge", "annotation", "difference", "export")
# These get a few faults in every test run.
OTHER_FORMS = ("difference by command", "difference by counter", "difference of runs", "export to callgrind",
               "export to trace", "export of commands")  # fmt: skip

# As in faults_test.py.
Fault = collections.namedtuple("Fault", "kind error then harmless quick")
FAULTS = [
    Fault("malloc", errno.ENOMEM, "", False, FILE_FORMS + ("merge without the bad",)),
    Fault("malloc", errno.ENOMEM, "+", False, PIPE_FORMS + OTHER_FORMS),
    Fault("read", errno.EIO, "", False, PIPE_FORMS + ("merge of a list",)),
    Fault("read", errno.EINTR, "", True, PIPE_FORMS),
    Fault("read", SHORT, "", True, PIPE_FORMS + ("merge of a zero list",)),
    Fault("write", errno.EIO, "", False, PIPE_FORMS + FILE_FORMS + OTHER_FORMS),
    Fault("write", errno.ENOSPC, "+", False, FILE_FORMS),
    Fault("write", errno.EINTR, "", True, PIPE_FORMS),
    Fault("write", SHORT, "", True, PIPE_FORMS + FILE_FORMS),
    Fault("open", errno.EACCES, "", False, FILE_FORMS + PIPE_FORMS),
    Fault("open", errno.EMFILE, "+", False, PIPE_FORMS + ("difference of sources",)),
    Fault("fstat", errno.EIO, "", False, PIPE_FORMS),
    Fault("fsync", errno.EIO, "", False, FILE_FORMS),
    Fault("rename", errno.EACCES, "", False, FILE_FORMS),
]


def left_something_out(clean, run):
    """An input or a source that could not be read is told or shown as missing."""
    return run.status in (0, 1) and (re.search(rb"left out\n$", run.err) or run.err == clean.err)


def complaint(fault, form, clean, run):
    """What is wrong with a disturbed run; empty when nothing is."""
    if run.mess:
        return "; ".join(run.mess)
    if (run.out, run.err, run.status, run.script) == (clean.out, clean.err, clean.status, clean.script):
        return ""
    if fault.harmless:
        return "it differs"
    if fault.kind == "write" and (run.out, run.status, run.script) == (clean.out, clean.status, clean.script):
        return ""  # a message was not written, and nobody is left to be told
    if run.status < 0:
        return f"signal {-run.status} ended it"
    if form.may_leave_out and fault.kind in ("read", "open", "fstat") and left_something_out(clean, run):
        return ""
    if run.status != 2:
        return "it is wrong in silence"
    if run.script is not None:
        return "there is a result"
    if not clean.out.startswith(run.out):
        return "it has written something else"
    is_mute = fault.kind == "write" and (fault.then == "+" or not run.out)
    if not is_mute and not re.search(rb"(?m)^%s: .+$" % form.program.encode(), run.err):
        return "it failed in silence"
    return ""


class CompanionFaults(ProgramTest):
    def setUp(self):
        super().setUp()
        adopt_orphans()
        for name, text in FILES.items():
            self.write(name, text)
        marks = tempfile.TemporaryDirectory(prefix="ptick-test-")
        self.addCleanup(marks.cleanup)
        self.stage = Stage(self.folder, os.path.join(marks.name, "struck"), RESULT)

    def run_form(self, form, fault=None):
        program = os.path.join(DYNAMIC_DIR, form.program)
        return self.stage.run(form.arguments, fault, program=program)

    def disturb(self, fault, name):
        """Lets the fault happen in every place of a form, one after the other; returns in how many
        places it did."""
        form = FORMS[name]
        clean = self.run_form(form)
        self.assertIn(clean.status, (0, 1), clean)
        place = 0
        while True:
            setting = f"{fault.kind}:{fault.error}:{place + 1}{fault.then}"
            run = self.run_form(form, setting)
            wrong = complaint(fault, form, clean, run)
            self.assertFalse(wrong, f"{setting} in {name} {form.arguments}: {wrong}\n{run}\n{clean}")
            if not run.struck:
                return place
            place += 1

    def test_no_failing_call_breaks_a_run(self):
        every = os.environ.get("PTICK_FAULTS") == "all"
        for fault in FAULTS:
            with self.subTest(fault=f"{fault.kind}:{fault.error}{fault.then}"):
                places = {}
                for name in FORMS if every else fault.quick:
                    with self.subTest(form=name):
                        places[name] = self.disturb(fault, name)
                if every:
                    print(f"{fault.kind}:{fault.error}{fault.then}", sum(places.values()), "places")
                missed = [name for name in fault.quick if places.get(name) == 0]
                self.assertFalse(missed, "it never happened here")

    def test_a_full_disk_is_told(self):
        for name, form in FORMS.items():
            if RESULT in form.arguments:
                continue
            with open("/dev/full", "wb") as full:
                run = subprocess.run(
                    [os.path.abspath(os.path.join(DYNAMIC_DIR, form.program)), *form.arguments],
                    cwd=self.folder, stdout=full, stderr=subprocess.PIPE, check=False)  # fmt: skip
            told = f"{form.program}: standard output: No space left on device\n".encode()
            with self.subTest(form=name):
                self.assertTrue(run.stderr.endswith(told), run.stderr)
                self.assertEqual(2, run.returncode)


if __name__ == "__main__":
    unittest.main()
