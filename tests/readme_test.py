"""Runs every command that the README shows and compares what it prints.

In a ```console block a line after "$ " is a command, the lines behind it are what it prints on both
streams; a line "..." stands for any number of lines. The commands of a block run in one shell, in a
folder with the examples, with the programs on the path.
"""

import os
import re
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from support.program import PTICK, SOURCE_DIR, ProgramTest, clean_environment  # noqa: E402

# These build the program; the script `test` runs the one and is the other.
SET_UP = ("./quickstart", "./test")
MARK = "-- end of a command --"


def console_blocks():
    """The (command, printed) pairs of each block."""
    with open(os.path.join(SOURCE_DIR, "README.md"), encoding="utf-8") as file:
        text = file.read()
    for block in re.findall(r"^```console\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        yield [
            tuple(part.partition("\n")[::2])
            for part in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]
        ]


def as_script(commands):
    """The commands with a mark behind each; one in the background is first waited to have begun."""
    script = ""
    for command in commands:
        script += command + "\n"
        background = re.fullmatch(r".* > (\S+) &", command)
        if background:
            script += f"until [ -s {background[1]} ]; do :; done\n"
        script += f"echo {MARK}\n"
    return script


def pattern(printed):
    lines = []
    for line in printed.splitlines():
        if line == "...":
            lines.append(r"(?:.*\n)*?")
        else:
            # Trailing blanks are not shown in a document.
            lines.append(re.escape(line.rstrip()) + r" *\n")
    return "".join(lines)


class ReadmeTest(ProgramTest):
    def test_every_command_prints_what_is_shown(self):
        os.symlink(os.path.join(SOURCE_DIR, "examples"), os.path.join(self.folder, "examples"))
        path = [os.path.dirname(os.path.abspath(PTICK)), os.environ["PATH"]]
        path.insert(1, os.path.dirname(os.path.abspath(os.environ["PORT_LISTENER"])))
        environment = clean_environment(
            PATH=os.pathsep.join(path), MAVRO_RUNTIME_DIR=os.path.join(self.folder, "ports")
        )
        ran = 0
        for block in console_blocks():
            shown = [pair for pair in block if pair[0] not in SET_UP]
            result = subprocess.run(
                ["bash", "-c", as_script([command for command, _ in shown])],
                cwd=self.folder,
                env=environment,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE,
                stderr=subprocess.STDOUT,
                timeout=60,
                check=False,
            )
            outputs = result.stdout.decode().split(MARK + "\n")
            for (command, printed), output in zip(shown, outputs):
                with self.subTest(command=command):
                    self.assertRegex(output, r"\A" + pattern(printed) + r"\Z")
                ran += 1
        self.assertGreater(ran, 10)


if __name__ == "__main__":
    unittest.main()
