"""Shells as users have them, on a terminal and with the completions where packages put them: what a
program gets from the keys that are typed, and all that a shell offers for a word."""

import glob
import os
import shutil

from support.program import SOURCE_DIR
from support.terminal import Terminal

# Takes the place of each program: writes down its arguments, each ended by a zero byte.
STAND_IN = """#!/bin/sh
for argument; do printf '%s\\0' "$argument"; done >"$RECORD"
echo "-- written --"
"""
WRITTEN = b"-- written --"

# Where packages put a completion below share/, by the ending of its file. zsh's has none.
PLACES = {
    ".bash": "bash-completion/completions/{}",
    ".fish": "fish/vendor_completions.d/{}.fish",
    "": "zsh/site-functions/{}",
}

# Of each shell: its command, and the settings it reads from a file in the home folder. In zsh
# Ctrl-X * puts all that is offered into the line, as Meta-* does in bash.
SHELLS = {
    "bash": ("bash --noprofile -i", ".bashrc", ". /usr/share/bash-completion/bash_completion\n"),
    "bash alone": (
        "bash --noprofile -i",
        ".bashrc",
        'for file in "$XDG_DATA_DIRS"/bash-completion/completions/*; do . "$file"; done\n',
    ),
    "zsh": (
        "zsh -i",
        ".zshrc",
        "fpath=($XDG_DATA_DIRS/zsh/site-functions $fpath)\n"
        "autoload -Uz compinit && compinit -u -D\n"
        "unsetopt AUTO_REMOVE_SLASH\n"
        "zle -C all-matches complete-word _generic\n"
        "bindkey '^X*' all-matches\n"
        "zstyle ':completion:all-matches::::' completer _all_matches _complete\n"
        "zstyle ':completion:all-matches:*' insert true\n",
    ),
    "fish": ("fish -i", ".config/fish/config.fish", "set -g fish_greeting\n"),
}
PUT_ALL = {"bash": "\033*", "bash alone": "\033*", "zsh": "\030*"}


def put(path, text, mode=0o644):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    os.chmod(path, mode)


class Shell:
    """One of SHELLS, in the folder "work" of a fresh folder."""

    def __init__(self, name, folder):
        self.name = name
        self.lines = 0
        self.record = os.path.join(folder, "record")
        words, settings_file, settings = SHELLS[name]
        put(os.path.join(folder, "home", settings_file), settings)
        for source in glob.glob(os.path.join(SOURCE_DIR, "completions", "*")):
            program, ending = os.path.splitext(os.path.basename(source))
            place = os.path.join(folder, "share", PLACES[ending].format(program))
            os.makedirs(os.path.dirname(place), exist_ok=True)
            os.symlink(source, place)
            put(os.path.join(folder, "bin", program.lstrip("_")), STAND_IN, 0o755)
        command, *options = words.split()
        path = shutil.which(command)
        if path is None:
            raise AssertionError(f"{command} is not installed")
        self.terminal = Terminal(
            [path, *options],
            os.path.join(folder, "work"),
            rows=24,
            columns=200,
            PATH=os.path.join(folder, "bin") + os.pathsep + os.environ["PATH"],
            HOME=os.path.join(folder, "home"),
            XDG_DATA_DIRS=os.path.join(folder, "share"),
            TERM="xterm",
            LC_ALL="C.UTF-8",
            RECORD=self.record,
        )
        self.terminal.wait_for_key_wait()

    def arguments(self, keys):
        """What the program gets when these keys and Return are typed."""
        self.terminal.press(keys.encode() + b"\r")
        self.lines += 1
        self.terminal.wait_for(WRITTEN, self.lines)
        self.terminal.wait_for_key_wait()
        with open(self.record, encoding="utf-8") as file:
            return file.read().split("\0")[:-1]

    def offered(self, line):
        """All that is offered for the last word of a line, in order. No word of the line may need
        quoting."""
        if self.name == "fish":
            keys = f"complete -C '{line}' | string replace -r '\\t.*' '' | xargs -d '\\n' ptick"
            found = self.arguments(keys)
        else:
            _, *before, last = line.split(" ")
            found = self.arguments(line + PUT_ALL[self.name])
            assert found[: len(before)] == before, found
            found = found[len(before) :]
            if found == [last]:
                return []  # the line is as it was
        return sorted(word.rstrip("/") for word in found)

    def close(self):
        self.terminal.press(b"exit\r")
        return self.terminal.end()
