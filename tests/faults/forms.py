"""The forms of a run that are disturbed, each with the results that it may have instead."""

import collections
import re

PROFILE = """# a comment
PROFILE:program\tDESK NORTH -JP
PROFILE:hertz\t100
PROFILE:pagesize\t4096
PROFILE:starttime\t1773043331
PROFILE:startclock\t1000
PROFILE:typerate\t10\t300
PROFILE:memused\t1000
PROFILE:perform\tstartclock\t1010\tendclock\t1020\tticks\t7\tusrcpu\t4\tsyscpu\t3\ttype\tqry\tcmd\tLIST ORDERS
PROFILE:perform\tstartclock\t1030\tendclock\t1040\ttype\tintr\tcmd\tTERM CLEAR
PROFILE:input\t13\t5\t1100\t1150\t10442
PROFILE:input\t9\t2\t1200\t1250\ta"~b
PROFILE:trace\tDESK\t1\t30
PROFILE:trace\tDESK\t2\t12
PROFILE:trace\tSTOCK.WITH.A.LONGER.NAME\t1\t40
PROFILE:trace\tSTOCK.WITH.A.LONGER.NAME\t3\t5
PROFILE:trace\tNOWHERE\t3\t99999
PROFILE:shared_object\tlibstock.so\t1
PROFILE:shared_object\tlibdesk.so\t1
PROFILE:subroutine_call\tDESK STOCK.WITH.A.LONGER.NAME\t17
PROFILE:subroutine_call\tDESK DATE\t4
PROFILE:user_ticks\t1\t50
PROFILE:resource\tmaxrss 1234
PROFILE:ticks\t100086
PROFILE:usrcpu\t60
PROFILE:syscpu\t20
PROFILE:endclock\t2000
PROFILE:endtime\t1773043341
"""

FILES = {
    "run1": PROFILE,
    "run2": PROFILE.replace("DESK\t1", "DESK\t4").replace("\t40\n", "\t41\n"),
    "src/DESK": "PROGRAM DESK\nPRINT 'desk'\n",
    "src/STOCK.WITH.A.LONGER.NAME": "PROGRAM STOCK\n*\nSTOP\n",
    "lib/DESK": "not this one\n",
    "sources": "src\nlib\n",
    "bin/size": '#!/bin/sh\necho "sizes of $1"\necho "more"\n',
}
KEY_FILE = "keys.txt"
NAME_WIDTH = 60
SOURCE_COLUMN = 44


def no_result(_clean, _run):
    """Nothing but what an undisturbed run gives."""
    return False


def same_lines(clean, run, width):
    """Whether every line is the undisturbed one or ends at `width`, or has "??" from there on."""
    pairs = list(zip(clean.out.split(b"\n"), run.out.split(b"\n")))
    return run.out.count(b"\n") == clean.out.count(b"\n") and all(
        got in (want, want[:width].rstrip(), want[:width] + b"??") for want, got in pairs
    )


def sizes_missing(clean, run):
    """The size of an object that could not be asked for is empty, and a message says why."""
    told = re.fullmatch(rb"ptick: cannot run size: .+\n", run.err)
    return told and run.status == 1 and same_lines(clean, run, NAME_WIDTH + 1)


def source_missing(clean, run):
    """A source text that could not be read is "??"; another source file may have one."""
    lines = run.out.replace(b"not this one", b"PROGRAM DESK")
    told = all(re.fullmatch(rb"ptick: \[201\] cannot open file '(src|lib)': .+", line)
               for line in run.err.splitlines())
    return told and run.status == 0 and same_lines(clean, run._replace(out=lines), SOURCE_COLUMN)


def one_of_two(clean, run):
    """A profile that could not be read is told and skipped in a merge."""
    told = re.fullmatch(rb"ptick: \[20[12]\] cannot [a-z]+ [a-z]+ '(\.|run[12])'( in '\.')?: [^\n]+\n", run.err)
    return told and run.status == 0 and b" from profile run" in run.out


def none_of_two(_clean, run):
    return run.status == 2 and run.err.endswith(b"\nNo input files...\n")


def other_account(clean, run):
    """The account is that of the environment where the user's name could not be read."""
    return not run.err and run.script and run.script.count(b"\n") == clean.script.count(b"\n") and (
        b" , account somebody\n" in run.script
    )


def either(*results):
    return lambda clean, run: any(result(clean, run) for result in results)


def send_error(_clean, run):
    return run.status == 0 and re.fullmatch(
        rb"Error number [1-9][0-9]* sending message to port 5\n", run.out
    )


def sends_counted(_clean, run):
    counts = re.fullmatch(
        rb"Message sent successfully to (\d+) ports and failed to (\d+) ports\n", run.out
    )
    return run.status == 0 and counts and int(counts[1]) + int(counts[2]) == 6


def switch_error(_clean, run):
    error = re.fullmatch(rb"ptick: Error number ([1-9][0-9]*) executing command\n", run.out)
    return error and run.status == int(error[1])


# `threads`: by the program that shares all work, however little it is.
Form = collections.namedtuple(
    "Form", "arguments may_give environment threads", defaults=(no_result, {}, 0)
)

FORMS = {
    "lines": Form(["run1"]),
    "programs": Form(["-n", "run1"]),
    "ancillary": Form(["-a", "run1"]),
    "objects": Form(["-o", "run1"]),
    "sizes": Form(["-ov", "run1"], sizes_missing),
    "performs": Form(["-p", "run1"]),
    "performs, verbose": Form(["-pv", "run1"]),
    "subroutines": Form(["-s", "run1"]),
    "all": Form(["-A", "run1"]),
    "all, verbose": Form(["-Av", "run1"], sizes_missing),
    "source": Form(["-n", "-fsrc", "-flib", "run1"], source_missing),
    "source list": Form(["-Fsources", "run1"], source_missing),
    "merge": Form(["-n", "run1", "run2"], either(one_of_two, none_of_two)),
    "lines, threads": Form(["run1"], threads=3),
    "programs, threads": Form(["-n", "run1"], threads=2),
    "merge, threads": Form(["-n", "run1", "run2"], either(one_of_two, none_of_two), threads=3),
    "keys": Form([f"-k{KEY_FILE}", "run1"]),
    "keys, rates": Form(
        [f"-tk{KEY_FILE}", "run1"], other_account, {"MAVRO_ACCOUNT": None, "LOGNAME": "somebody"}
    ),
    "usage": Form(["-h"]),
    "wrong letter": Form(["-x"]),
    "no profile": Form(["missing"]),
    "port": Form(["5", "STOP", "NOW"], send_error),
    "ports": Form(["3-8", "STOP"], sends_counted),
    "monitor on": Form(["-j", "ON", "5", "file", "options"], switch_error),
    "monitor off": Form(["-j", "OFF", "5"], switch_error),
}
