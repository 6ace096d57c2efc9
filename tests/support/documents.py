"""What documents show: commands with what they print, and links."""

import os
import re
import subprocess

from support.program import SOURCE_DIR

MARK = "-- end of a command --"


def read(*path):
    with open(os.path.join(SOURCE_DIR, *path), encoding="utf-8") as file:
        return file.read()


def in_repository(text):
    """What a reader in the repository sees of a document."""
    remark = r"^<!-- where it is installed\n.*?^-->\n"
    return re.sub(remark, "", text, flags=re.MULTILINE | re.DOTALL)


def links(text):
    """The files that a document links to."""
    targets = re.findall(r"\]\(([^)\s]+)\)", text)
    return [re.sub("#.*", "", target) for target in targets if not target.startswith("#")]


def blocks(text, kind):
    """The contents of the ```kind blocks, in order."""
    return re.findall(rf"^```{kind}\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)


def commands_shown(text):
    """The (command, printed) pairs of all ```console blocks: a line after "$ " is a command, the lines
    after it are what it prints on both streams."""
    return [
        tuple(part.partition("\n")[::2])
        for block in blocks(text, "console")
        for part in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]
    ]


def outputs(commands, folder, environment):
    """What each of the commands prints when they are typed into one shell."""
    script = ""
    for command in commands:
        script += command + "\n"
        background = re.fullmatch(r".* > (\S+) &", command)
        if background:  # waits until it has begun
            script += f"until [ -s {background[1]} ]; do :; done\n"
        script += f"echo '{MARK}'\n"
    result = subprocess.run(
        ["bash", "-c", script],
        cwd=folder,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        timeout=60,
        check=False,
    )
    return result.stdout.decode().split(MARK + "\n")[:-1]


def pattern(printed):
    """Matches what is shown: a line "..." is any number of lines, blanks at the ends and the
    CR of a line end are not shown."""
    lines = []
    for line in printed.splitlines():
        if line == "...":
            lines.append(r"(?:.*\n)*?")
        else:
            lines.append(re.escape(line.rstrip()) + r" *\r?\n")
    return r"\A" + "".join(lines) + r"\Z"


def check_commands(test, shown, folder, environment):
    """Fails where a command of the (command, printed) pairs prints something else, in one shell."""
    printed = outputs([command for command, _ in shown], folder, environment)
    test.assertEqual(len(shown), len(printed), printed)
    for (command, want), output in zip(shown, printed):
        with test.subTest(command=command):
            test.assertRegex(output, pattern(want))
